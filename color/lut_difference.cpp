#include "color/lut_difference.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "color/argb_float_ops.h"
#include "color/unit_clamp.h"

namespace vl1 {

namespace {

#if defined(__SSE2__)

// lut + (source - identity) * weight, then clamp_unit, on all four channels of one entry.
inline void add_entry_difference(argb_float& entry, const argb_float& source, __m128 identity, __m128 weight)
{
    const __m128 sum = _mm_add_ps(_mm_loadu_ps(&entry.a), _mm_mul_ps(_mm_sub_ps(_mm_loadu_ps(&source.a), identity), weight));
    _mm_storeu_ps(&entry.a, detail::clamp_unit_ps(sum));
}

#else

inline void add_entry_difference(argb_float& entry, const argb_float& source, const argb_float& identity, float weight)
{
    const argb_float v = entry + (source - identity) * weight;
    entry = {clamp_unit(v.a), clamp_unit(v.r), clamp_unit(v.g), clamp_unit(v.b)};
}

#endif

}  // namespace

void add_lut_difference(lut_argb<32>& lut, const lut_argb<32>& source, float weight)
{
    if (lut.data.size() != lut_argb<32>::entry_count || source.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");

    std::array<float, 32> grid{};
    for (std::size_t i = 0; i < 32; ++i)
        grid[i] = static_cast<float>(i) / 31.0f;

#if defined(__SSE2__)
    // The identity entry as a register: alpha, red and green lanes per (r, g), the blue lane
    // OR-ed in (the other lanes of each part are +0.0, all bits clear).
    __m128 blue[32];
    for (std::size_t b = 0; b < 32; ++b)
        blue[b] = _mm_set_ps(grid[b], 0.0f, 0.0f, 0.0f);
    const __m128 w = _mm_set1_ps(weight);
#endif

    std::size_t i = 0;
    for (std::size_t r = 0; r < 32; ++r) {
        for (std::size_t g = 0; g < 32; ++g) {
#if defined(__SSE2__)
            const __m128 alpha_red_green = _mm_set_ps(0.0f, grid[g], grid[r], 1.0f);
            for (std::size_t b = 0; b < 32; ++b, ++i)
                add_entry_difference(lut.data[i], source.data[i], _mm_or_ps(alpha_red_green, blue[b]), w);
#else
            for (std::size_t b = 0; b < 32; ++b, ++i)
                add_entry_difference(lut.data[i], source.data[i], argb_float{1.0f, grid[r], grid[g], grid[b]}, weight);
#endif
        }
    }
}

}  // namespace vl1
