// The trilinear sampling step of lut_sample_kernel.h for four colours under AVX2, two per
// register, one per 128-bit half. Every value is made by the scalar step's operations, on the
// same operands in the same order, so each colour gets the scalar step's bits. As under
// AVX-512F (lut_sample_avx512.h), a cell's two entries along blue are read as one 256-bit
// pair, and the red and green lerps run on such pairs. Shared by the AVX2 row kernel and the
// mapping of a table through another.
#pragma once

#if defined(__x86_64__)

#include <immintrin.h>

#include <cstdint>

#include "framework/simd_target.h"

namespace vl1::detail {

/// Byte offsets (an entry is 16 bytes, a blue step 16, a green step 512, a red step 16384) of
/// the four blue pairs of each of four colours' cells, as in lut_sample_avx512.h: colour k's
/// pair at the lower red and green index at corner[4k], one red step up at corner[4k + 1], one
/// green step up at corner[4k + 2], both at corner[4k + 3]; a step is 0 at an axis' top. A
/// pair starts at blue index 30 when the colour's blue index is 31; such a colour's four lanes
/// of `blue_at_top[k / 2]` are all ones, the others zero.
struct four_cells {
    alignas(32) int32_t corner[16];
    __m256i blue_at_top[2];
};

/// Grid position of every lane as lut_axis_position_32: x = c * 31, then x > 0 ? x : 0,
/// then x < 31 ? x : 31; a colour known to lie in -0.0..1.0 skips that last step.
template <bool InUnitRange>
VL1_AVX2 __m256 grid_position_avx2(__m256 colour)
{
    const __m256 top = _mm256_set1_ps(31.0f);
    const __m256 x = _mm256_max_ps(_mm256_mul_ps(colour, top), _mm256_setzero_ps());
    if constexpr (InUnitRange)
        return x;
    else
        return _mm256_min_ps(x, top);
}

/// The corners of the two colours whose grid indices (0..31) stand in lanes R, G and B of
/// each half of `indices`, into `corner` (eight offsets); returns their blue-top lanes.
template <int R, int G, int B>
VL1_AVX2 __m256i find_two_cells_avx2(__m256i indices, int32_t* corner)
{
    constexpr auto stride = [](int lane) { return lane == R ? 16384 : lane == G ? 512 : lane == B ? 16 : 0; };
    constexpr auto lowest_pair = [](int lane) { return lane == B ? 30 : 31; };
    const __m256i strides = _mm256_setr_epi32(stride(0), stride(1), stride(2), stride(3), stride(0), stride(1),
                                              stride(2), stride(3));
    const __m256i lowest = _mm256_setr_epi32(lowest_pair(0), lowest_pair(1), lowest_pair(2), lowest_pair(3),
                                             lowest_pair(0), lowest_pair(1), lowest_pair(2), lowest_pair(3));
    const __m256i products = _mm256_mullo_epi32(_mm256_min_epi32(indices, lowest), strides);
    const __m256i pairs = _mm256_add_epi32(products, _mm256_shuffle_epi32(products, _MM_SHUFFLE(2, 3, 0, 1)));
    const __m256i base = _mm256_add_epi32(pairs, _mm256_shuffle_epi32(pairs, _MM_SHUFFLE(1, 0, 3, 2)));
    const __m256i steps = _mm256_and_si256(_mm256_cmpgt_epi32(_mm256_set1_epi32(31), indices), strides);
    const __m256i red_corners = _mm256_setr_epi32(0, -1, 0, -1, 0, -1, 0, -1);    // corners 1 and 3
    const __m256i green_corners = _mm256_setr_epi32(0, 0, -1, -1, 0, 0, -1, -1);  // corners 2 and 3
    const __m256i red_steps = _mm256_and_si256(_mm256_shuffle_epi32(steps, R * 0x55), red_corners);
    const __m256i green_steps = _mm256_and_si256(_mm256_shuffle_epi32(steps, G * 0x55), green_corners);
    _mm256_store_si256(reinterpret_cast<__m256i*>(corner),
                       _mm256_add_epi32(base, _mm256_add_epi32(red_steps, green_steps)));
    return _mm256_cmpeq_epi32(_mm256_shuffle_epi32(indices, B * 0x55), _mm256_set1_epi32(31));
}

/// (high - low) * f + low.
VL1_AVX2 __m256 lerp_avx2(__m256 low, __m256 high, __m256 f)
{
    return _mm256_add_ps(_mm256_mul_ps(_mm256_sub_ps(high, low), f), low);
}

VL1_AVX2 __m256 blue_pair(const char* table, int32_t offset)
{
    return _mm256_loadu_ps(reinterpret_cast<const float*>(table + offset));
}

/// The lerps along red, then green, of the colour whose four corners start at `corner` and
/// whose fractions stand in lanes R and G of half H of `f`: the lower blue value in the low
/// half of the result, the upper one in the high half.
template <int H, int R, int G>
VL1_AVX2 __m256 along_red_and_green_avx2(const char* table, const int32_t* corner, __m256 f)
{
    const __m256 fr = _mm256_permutevar8x32_ps(f, _mm256_set1_epi32(4 * H + R));
    const __m256 fg = _mm256_permutevar8x32_ps(f, _mm256_set1_epi32(4 * H + G));
    const __m256 green_low = lerp_avx2(blue_pair(table, corner[0]), blue_pair(table, corner[1]), fr);
    const __m256 green_high = lerp_avx2(blue_pair(table, corner[2]), blue_pair(table, corner[3]), fr);
    return lerp_avx2(green_low, green_high, fg);
}

/// The seven lerps of sample_lut_32, red first, for colours 2 * pair and 2 * pair + 1 of
/// `cells`, whose fractions stand in lanes R, G and B of each half of `f`. Results in table
/// order a, r, g, b, one colour per half; the alpha lane is the interpolated table alpha,
/// which callers replace.
template <int R, int G, int B>
VL1_AVX2 __m256 interpolate_two_avx2(const char* table, const four_cells& cells, int pair, __m256 f)
{
    const int32_t* corner = cells.corner + 8 * pair;
    const __m256 first = along_red_and_green_avx2<0, R, G>(table, corner, f);
    const __m256 second = along_red_and_green_avx2<1, R, G>(table, corner + 4, f);
    const __m256 upper = _mm256_permute2f128_ps(first, second, 0x31);
    // At the blue top both ends of the blue lerp are the entry at 31, the upper one of its pair.
    const __m256 lower = _mm256_blendv_ps(_mm256_permute2f128_ps(first, second, 0x20), upper,
                                          _mm256_castsi256_ps(cells.blue_at_top[pair]));
    return lerp_avx2(lower, upper, _mm256_permute_ps(f, _MM_SHUFFLE(B, B, B, B)));
}

/// The cells of four colours, two per register, and their fractions.
template <int R, int G, int B, bool InUnitRange = false>
VL1_AVX2 four_cells find_four_avx2(__m256 first_pair, __m256 second_pair, __m256& first_f, __m256& second_f)
{
    const __m256 x01 = grid_position_avx2<InUnitRange>(first_pair);
    const __m256 x23 = grid_position_avx2<InUnitRange>(second_pair);
    const __m256i i01 = _mm256_cvttps_epi32(x01);
    const __m256i i23 = _mm256_cvttps_epi32(x23);
    first_f = _mm256_sub_ps(x01, _mm256_cvtepi32_ps(i01));
    second_f = _mm256_sub_ps(x23, _mm256_cvtepi32_ps(i23));
    four_cells cells;
    cells.blue_at_top[0] = find_two_cells_avx2<R, G, B>(i01, cells.corner);
    cells.blue_at_top[1] = find_two_cells_avx2<R, G, B>(i23, cells.corner + 8);
    return cells;
}

}  // namespace vl1::detail

#endif
