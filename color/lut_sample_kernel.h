// The trilinear sampling step shared by sample_lut and the row kernels, kept inline so that
// a row loop pays no call per pixel. Callers check the table size once beforehand.
#pragma once

#include <cstddef>

#include "color/argb_float_ops.h"

namespace vl1::detail {

/// Grid position of one channel on the 32-point axis.
struct lut_axis_position {
    std::size_t i0;  // lower grid index, 0..31
    std::size_t i1;  // upper grid index, 1..31; equals i0 only at the top
    float f;         // fraction between them
};

/// x = c * 31 clamped to 0..31 (lower bound first; a NaN takes the lower bound), index
/// truncated toward zero, i1 = min(i0, 30) + 1, so c >= 1 reads index 31 with fraction 0.
inline lut_axis_position lut_axis_position_32(float c)
{
    float x = c * 31.0f;
    x = x > 0.0f ? x : 0.0f;
    x = x < 31.0f ? x : 31.0f;
    const std::size_t i0 = static_cast<std::size_t>(x);
    const std::size_t i1 = (i0 < 30 ? i0 : 30) + 1;
    return {i0, i1, x - static_cast<float>(i0)};
}

/// One interpolation step, written as (high - low) * f + low on all four channels.
inline argb_float lut_lerp(const argb_float& low, const argb_float& high, float f)
{
    return (high - low) * f + low;
}

/// Trilinear value of the 32768-entry table `table` at `in`: along red first (four lerps),
/// then green (two), then blue (one). Alpha of the result is the alpha of `in`; nothing is
/// clamped.
inline argb_float sample_lut_32(const argb_float* table, const argb_float& in)
{
    const lut_axis_position r = lut_axis_position_32(in.r);
    const lut_axis_position g = lut_axis_position_32(in.g);
    const lut_axis_position b = lut_axis_position_32(in.b);
    const auto at = [table](std::size_t ri, std::size_t gi, std::size_t bi) -> const argb_float& {
        return table[(ri * 32 + gi) * 32 + bi];
    };

    const argb_float g0b0 = lut_lerp(at(r.i0, g.i0, b.i0), at(r.i1, g.i0, b.i0), r.f);
    const argb_float g0b1 = lut_lerp(at(r.i0, g.i0, b.i1), at(r.i1, g.i0, b.i1), r.f);
    const argb_float g1b0 = lut_lerp(at(r.i0, g.i1, b.i0), at(r.i1, g.i1, b.i0), r.f);
    const argb_float g1b1 = lut_lerp(at(r.i0, g.i1, b.i1), at(r.i1, g.i1, b.i1), r.f);

    const argb_float b0 = lut_lerp(g0b0, g1b0, g.f);
    const argb_float b1 = lut_lerp(g0b1, g1b1, g.f);

    argb_float out = lut_lerp(b0, b1, b.f);
    out.a = in.a;
    return out;
}

}  // namespace vl1::detail
