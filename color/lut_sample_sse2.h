// The trilinear sampling step of lut_sample_kernel.h with one colour per SSE2 register: the
// four channels sit in the lanes, and every step is the scalar step, in the same order and
// on the same operands, so each lane gets the scalar result bit for bit. (Only a NaN made
// from two NaNs may carry either one's payload, in this code as in the scalar one: the
// compiler may order the operands of an addition either way.) Inline, so that sample_lut,
// map_lut_through and the row kernels share it without a call per pixel.
#pragma once

#if defined(__SSE2__)

#include <emmintrin.h>

#include <cstdint>

#include "color/argb_float_ops.h"

namespace vl1::detail {

inline constexpr bool sse2_sampling_available = true;

/// (high - low) * f + low on all four lanes.
inline __m128 lut_lerp_sse2(__m128 low, __m128 high, __m128 f)
{
    return _mm_add_ps(_mm_mul_ps(_mm_sub_ps(high, low), f), low);
}

/// Grid position of each lane, as lut_axis_position_32: x = c * 31, then x > 0 ? x : 0
/// (maxps returns its second operand for NaN and for -0.0, as the scalar comparison does),
/// then x < 31 ? x : 31. A colour known to lie in -0.0..1.0 (every pixel the row kernels
/// read) can't exceed 31, and skips that last step.
template <bool InUnitRange>
inline __m128 grid_position_sse2(__m128 colour)
{
    const __m128 top = _mm_set1_ps(31.0f);
    const __m128 x = _mm_max_ps(_mm_mul_ps(colour, top), _mm_setzero_ps());
    if constexpr (InUnitRange)
        return x;
    else
        return _mm_min_ps(x, top);
}

/// Byte strides of the lanes R, G and B of a colour: an entry is 16 bytes, a green step 32
/// entries, a red step 1024; the fourth lane counts nothing.
template <int R, int G, int B>
inline constexpr int16_t lane_stride(int lane)
{
    return lane == R ? 16384 : lane == G ? 512 : lane == B ? 16 : 0;
}

/// The seven lerps of sample_lut_32, red first, from the cell whose lower corner is at
/// `corner`; `step_*` are the byte offsets to the upper neighbour on each axis (0 at the
/// top of an axis) and `f` holds the fractions in the colour's lanes.
template <int R, int G, int B>
inline __m128 interpolate_cell_sse2(const char* corner, uint32_t step_r, uint32_t step_g, uint32_t step_b, __m128 f)
{
    const char* r1g0 = corner + step_r;
    const char* r0g1 = corner + step_g;
    const char* r1g1 = r1g0 + step_g;
    const auto at = [](const char* p) { return _mm_loadu_ps(reinterpret_cast<const float*>(p)); };

    const __m128 fr = _mm_shuffle_ps(f, f, _MM_SHUFFLE(R, R, R, R));
    const __m128 fg = _mm_shuffle_ps(f, f, _MM_SHUFFLE(G, G, G, G));
    const __m128 fb = _mm_shuffle_ps(f, f, _MM_SHUFFLE(B, B, B, B));

    const __m128 g0b0 = lut_lerp_sse2(at(corner), at(r1g0), fr);
    const __m128 g0b1 = lut_lerp_sse2(at(corner + step_b), at(r1g0 + step_b), fr);
    const __m128 g1b0 = lut_lerp_sse2(at(r0g1), at(r1g1), fr);
    const __m128 g1b1 = lut_lerp_sse2(at(r0g1 + step_b), at(r1g1 + step_b), fr);
    const __m128 b0 = lut_lerp_sse2(g0b0, g1b0, fg);
    const __m128 b1 = lut_lerp_sse2(g0b1, g1b1, fg);
    return lut_lerp_sse2(b0, b1, fb);
}

/// The trilinear value of the 32768-entry `table` at a colour whose red, green and blue stand
/// in lanes R, G and B of `colour` (the fourth lane is ignored). The result is in table
/// order a, r, g, b, its alpha lane the interpolated table alpha, which callers replace.
template <int R, int G, int B, bool InUnitRange = false>
inline __m128 trilinear_sse2(const argb_float* table, __m128 colour)
{
    // Truncation to i0; i1 = min(i0, 30) + 1 and f = x - i0 as in the scalar step.
    const __m128 x = grid_position_sse2<InUnitRange>(colour);
    const __m128i i0 = _mm_cvttps_epi32(x);
    const __m128i i1 = _mm_add_epi32(_mm_min_epi16(i0, _mm_set1_epi32(30)), _mm_set1_epi32(1));
    const __m128 f = _mm_sub_ps(x, _mm_cvtepi32_ps(i0));

    // The indices fit 16 bits, so pmaddwd multiplies each 32-bit lane by its stride.
    const __m128i strides = _mm_setr_epi32(lane_stride<R, G, B>(0), lane_stride<R, G, B>(1), lane_stride<R, G, B>(2),
                                           lane_stride<R, G, B>(3));
    const __m128i low = _mm_madd_epi16(i0, strides);
    const __m128i step = _mm_madd_epi16(_mm_sub_epi32(i1, i0), strides);
    const __m128i pair_sums = _mm_add_epi32(low, _mm_shuffle_epi32(low, _MM_SHUFFLE(1, 0, 3, 2)));
    // All offsets are non-negative: unsigned, they widen to pointer size for free.
    const auto lane = [](__m128i v) { return static_cast<uint32_t>(_mm_cvtsi128_si32(v)); };
    const uint32_t base = lane(_mm_add_epi32(pair_sums, _mm_shuffle_epi32(pair_sums, _MM_SHUFFLE(2, 3, 0, 1))));
    return interpolate_cell_sse2<R, G, B>(reinterpret_cast<const char*>(table) + base,
                                          lane(_mm_shuffle_epi32(step, _MM_SHUFFLE(R, R, R, R))),
                                          lane(_mm_shuffle_epi32(step, _MM_SHUFFLE(G, G, G, G))),
                                          lane(_mm_shuffle_epi32(step, _MM_SHUFFLE(B, B, B, B))), f);
}

/// trilinear_sse2 for two colours at once. The two cells are found together, the indices of
/// both packed into one register of 16-bit lanes, which halves that part of the work; the
/// lerps are those of trilinear_sse2, so each result has its bits.
template <int R, int G, int B, bool InUnitRange = false>
inline void trilinear_pair_sse2(const argb_float* table, __m128 first, __m128 second, __m128& first_out,
                                __m128& second_out)
{
    const __m128 x_first = grid_position_sse2<InUnitRange>(first);
    const __m128 x_second = grid_position_sse2<InUnitRange>(second);
    const __m128i i_first = _mm_cvttps_epi32(x_first);
    const __m128i i_second = _mm_cvttps_epi32(x_second);
    const __m128 f_first = _mm_sub_ps(x_first, _mm_cvtepi32_ps(i_first));
    const __m128 f_second = _mm_sub_ps(x_second, _mm_cvtepi32_ps(i_second));

    // Lanes 0..3 the first colour's indices, 4..7 the second's, each 0..31.
    const __m128i indices = _mm_packs_epi32(i_first, i_second);
    const __m128i strides = _mm_setr_epi16(
        lane_stride<R, G, B>(0), lane_stride<R, G, B>(1), lane_stride<R, G, B>(2), lane_stride<R, G, B>(3),
        lane_stride<R, G, B>(0), lane_stride<R, G, B>(1), lane_stride<R, G, B>(2), lane_stride<R, G, B>(3));
    const __m128i products = _mm_madd_epi16(indices, strides);
    const __m128i bases = _mm_add_epi32(products, _mm_shuffle_epi32(products, _MM_SHUFFLE(2, 3, 0, 1)));
    // The upper neighbour is one step up (i1 = i0 + 1) except at index 31 (i1 = i0).
    const __m128i steps = _mm_and_si128(_mm_cmpgt_epi16(_mm_set1_epi16(31), indices), strides);

    const auto lane = [](__m128i v) { return static_cast<uint32_t>(_mm_cvtsi128_si32(v)); };
    const auto* bytes = reinterpret_cast<const char*>(table);
    first_out = interpolate_cell_sse2<R, G, B>(
        bytes + lane(bases), static_cast<uint32_t>(_mm_extract_epi16(steps, R)),
        static_cast<uint32_t>(_mm_extract_epi16(steps, G)), static_cast<uint32_t>(_mm_extract_epi16(steps, B)), f_first);
    second_out = interpolate_cell_sse2<R, G, B>(
        bytes + lane(_mm_shuffle_epi32(bases, _MM_SHUFFLE(2, 2, 2, 2))),
        static_cast<uint32_t>(_mm_extract_epi16(steps, 4 + R)), static_cast<uint32_t>(_mm_extract_epi16(steps, 4 + G)),
        static_cast<uint32_t>(_mm_extract_epi16(steps, 4 + B)), f_second);
}

/// sample_lut_32 for a colour in table order a, r, g, b: the result keeps the alpha of `in`.
inline argb_float sample_lut_32_sse2(const argb_float* table, const argb_float& in)
{
    // Two 8-byte halves: a colour just returned from a function often sits in memory as two
    // 8-byte stores, which a 16-byte load could not take over directly.
    const __m128 low = _mm_castpd_ps(_mm_load_sd(reinterpret_cast<const double*>(&in.a)));
    const __m128 colour = _mm_loadh_pi(low, reinterpret_cast<const __m64*>(&in.g));
    const __m128 sampled = _mm_move_ss(trilinear_sse2<1, 2, 3>(table, colour), colour);
    argb_float out;
    _mm_storeu_ps(&out.a, sampled);
    return out;
}

}  // namespace vl1::detail

#else

namespace vl1::detail {
inline constexpr bool sse2_sampling_available = false;
}  // namespace vl1::detail

#endif
