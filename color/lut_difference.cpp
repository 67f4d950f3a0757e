#include "color/lut_difference.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "color/argb_float_ops.h"
#include "color/unit_clamp.h"

namespace vl1 {

void add_lut_difference(lut_argb<32>& lut, const lut_argb<32>& source, float weight)
{
    if (lut.data.size() != lut_argb<32>::entry_count || source.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");

    std::array<float, 32> grid{};
    for (std::size_t i = 0; i < 32; ++i)
        grid[i] = static_cast<float>(i) / 31.0f;

    std::size_t i = 0;
    for (std::size_t r = 0; r < 32; ++r) {
        for (std::size_t g = 0; g < 32; ++g) {
            for (std::size_t b = 0; b < 32; ++b, ++i) {
                const argb_float identity{1.0f, grid[r], grid[g], grid[b]};
                const argb_float v = lut.data[i] + (source.data[i] - identity) * weight;
                lut.data[i] = {clamp_unit(v.a), clamp_unit(v.r), clamp_unit(v.g), clamp_unit(v.b)};
            }
        }
    }
}

}  // namespace vl1
