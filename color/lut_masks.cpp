#include "color/lut_masks.h"

namespace vl1::lut_masks {

namespace {

// The compiler computes the tables from the rule in lut_masks.h, so the rule is the source
// and no list of numbers is; nothing runs at load time.

// Square root by Newton's iteration from above (std::sqrt isn't usable in constant
// evaluation). It stops at the first step that doesn't decrease, at most an ulp or so from
// the rounded root; the mask values round far from any such difference.
constexpr double root(double v)
{
    if (v <= 0.0)
        return 0.0;
    double x = v > 1.0 ? v : 1.0;
    for (;;) {
        const double next = 0.5 * (x + v / x);
        if (next >= x)
            return x;
        x = next;
    }
}

constexpr double shortfall_squared(int v)
{
    return v > 0 ? static_cast<double>(v) * v : 0.0;
}

constexpr double zone_distance(int r, int g, int b, double level_weight)
{
    const double hue = shortfall_squared(g - r) + shortfall_squared(b - g) + shortfall_squared(1 - (r - b)) +
                       shortfall_squared((r - g) - 8);
    const double level = shortfall_squared(7 - r) + shortfall_squared(6 - g);
    return root(hue + level_weight * level);
}

enum class ease { square_root, out_quadratic };

constexpr double eased(double x, ease shape)
{
    return shape == ease::square_root ? root(x) : 1.0 - (1.0 - x) * (1.0 - x);
}

constexpr std::array<float, mask_entry_count> make_mask(double level_weight, double reach, ease shape)
{
    std::array<float, mask_entry_count> mask{};
    for (int r = 0; r < 17; ++r)
        for (int g = 0; g < 17; ++g)
            for (int b = 0; b < 17; ++b) {
                const double x = zone_distance(r, g, b, level_weight) / reach;
                // round(255 * v) half away from zero, v >= 0
                const int steps = static_cast<int>(eased(x < 1.0 ? x : 1.0, shape) * 255.0 + 0.5);
                mask[mask_index(static_cast<std::size_t>(r), static_cast<std::size_t>(g), static_cast<std::size_t>(b))] =
                    static_cast<float>(steps) / 255.0f;
            }
    return mask;
}

}  // namespace

constinit const std::array<float, mask_entry_count> select_skintones = make_mask(0.47, 8.04, ease::square_root);
constinit const std::array<float, mask_entry_count> select_skintones_extreme =
    make_mask(0.48, 8.537, ease::out_quadratic);

}  // namespace vl1::lut_masks
