#include "color/lut_argb.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace vl1 {

namespace {

// The identity of lut_argb<32> is computed on a 16-bit scale: an accumulator grows by
// 65535/31 per grid point in single precision and is then scaled by the float nearest to
// 1/65535. Accumulating (rather than multiplying i * step) is what fixes the low bits, which
// theme blending compares against, so it must stay an accumulation.
constexpr float identity_step_16bit = 2114.0322f;       // bits 0x45042084
constexpr float inverse_full_scale_16bit = 1.5259022e-5f;  // bits 0x37800080

std::array<float, 32> identity_axis_values_32()
{
    std::array<float, 32> values{};
    float s = 0.0f;
    for (float& v : values) {
        v = s > 65535.0f ? 1.0f : std::max(s, 0.0f) * inverse_full_scale_16bit;
        s += identity_step_16bit;
    }
    return values;
}

}  // namespace

void fill_identity(lut_argb<32>& lut)
{
    if (lut.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
    static const std::array<float, 32> axis = identity_axis_values_32();
    std::size_t i = 0;
    for (std::size_t r = 0; r < 32; ++r)
        for (std::size_t g = 0; g < 32; ++g)
            for (std::size_t b = 0; b < 32; ++b)
                lut.data[i++] = argb_float{1.0f, axis[r], axis[g], axis[b]};
}

lut_argb_variable make_identity_17()
{
    lut_argb_variable lut;
    std::size_t i = 0;
    for (std::size_t r = 0; r < 17; ++r)
        for (std::size_t g = 0; g < 17; ++g)
            for (std::size_t b = 0; b < 17; ++b)
                lut.data[i++] = argb_float{1.0f, std::min(static_cast<float>(r) * 0.0625f, 1.0f),
                                           std::min(static_cast<float>(g) * 0.0625f, 1.0f),
                                           std::min(static_cast<float>(b) * 0.0625f, 1.0f)};
    return lut;
}

}  // namespace vl1
