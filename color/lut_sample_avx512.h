// The trilinear sampling step of lut_sample_kernel.h for four colours under AVX-512F. Every
// value is made by the scalar step's operations, on the same operands in the same order, so
// each colour gets the scalar step's bits; only where the values sit in the registers differs.
// The colours' red, green and blue stand in lanes R, G and B of each 128-bit quarter (0, 1, 2
// for pixels, 1, 2, 3 for table entries). Shared by the AVX-512F row kernel and the mapping of
// a table through another.
//
// Blue is the table's innermost axis, so the two entries of a cell that differ only in blue
// lie side by side: one 256-bit read fetches both, and a cell takes four reads instead of
// eight. The four lerps along red then run on such pairs, two colours per register, and the
// green lerp likewise; the blue lerp runs on four colours at once.
#pragma once

#if defined(__x86_64__)

#include <immintrin.h>

#include <cstdint>

#include "framework/simd_target.h"

namespace vl1::detail {

/// Byte offsets (an entry is 16 bytes, a blue step 16, a green step 512, a red step 16384) of
/// the four blue pairs of each colour's cell: colour k's pair at the lower red and green index
/// at corner[4k], one red step up at corner[4k + 1], one green step up at corner[4k + 2], both
/// at corner[4k + 3]; a step is 0 at an axis' top. A pair starts at blue index 30 when the
/// colour's blue index is 31, whose pair would run past its row; such colours have their bit
/// (all four of their quarter's) set in `blue_at_top`.
struct cells_of_four {
    alignas(64) int32_t corner[16];
    __mmask16 blue_at_top;
};

/// The cells of the four colours whose grid indices (0..31) stand in lanes R, G and B.
template <int R, int G, int B>
VL1_AVX512 void find_cells_avx512(__m512i indices, cells_of_four& cells)
{
    constexpr auto stride = [](int lane) { return lane == R ? 16384 : lane == G ? 512 : lane == B ? 16 : 0; };
    constexpr auto lowest_pair = [](int lane) { return lane == B ? 30 : 31; };
    constexpr _MM_PERM_ENUM red_lane = static_cast<_MM_PERM_ENUM>(R * 0x55);
    constexpr _MM_PERM_ENUM green_lane = static_cast<_MM_PERM_ENUM>(G * 0x55);
    constexpr _MM_PERM_ENUM blue_lane = static_cast<_MM_PERM_ENUM>(B * 0x55);
    const __m512i strides = _mm512_set4_epi32(stride(3), stride(2), stride(1), stride(0));
    const __m512i starts = _mm512_min_epi32(
        indices, _mm512_set4_epi32(lowest_pair(3), lowest_pair(2), lowest_pair(1), lowest_pair(0)));
    const __m512i products = _mm512_mullo_epi32(starts, strides);
    const __m512i pairs = _mm512_add_epi32(products, _mm512_shuffle_epi32(products, _MM_PERM_CDAB));
    const __m512i base = _mm512_add_epi32(pairs, _mm512_shuffle_epi32(pairs, _MM_PERM_BADC));
    const __mmask16 below_top = _mm512_cmplt_epi32_mask(indices, _mm512_set1_epi32(31));
    const __m512i steps = _mm512_maskz_mov_epi32(below_top, strides);
    const __m512i red_steps = _mm512_maskz_shuffle_epi32(0xaaaa, steps, red_lane);      // corners 1 and 3
    const __m512i green_steps = _mm512_maskz_shuffle_epi32(0xcccc, steps, green_lane);  // corners 2 and 3
    _mm512_store_si512(cells.corner, _mm512_add_epi32(base, _mm512_add_epi32(red_steps, green_steps)));
    cells.blue_at_top =
        _mm512_cmpeq_epi32_mask(_mm512_shuffle_epi32(indices, blue_lane), _mm512_set1_epi32(31));
}

/// (high - low) * f + low.
VL1_AVX512 __m512 lerp_avx512(__m512 low, __m512 high, __m512 f)
{
    return _mm512_add_ps(_mm512_mul_ps(_mm512_sub_ps(high, low), f), low);
}

/// The blue pairs at corner `c` of colours k and k + 1, one colour per 256-bit half.
VL1_AVX512 __m512 two_pairs_avx512(const char* table, const cells_of_four& cells, int k, int c)
{
    const __m256 first = _mm256_loadu_ps(reinterpret_cast<const float*>(table + cells.corner[4 * k + c]));
    const __m256 second = _mm256_loadu_ps(reinterpret_cast<const float*>(table + cells.corner[4 * k + 4 + c]));
    const __m512d both = _mm512_insertf64x4(_mm512_castpd256_pd512(_mm256_castps_pd(first)), _mm256_castps_pd(second), 1);
    return _mm512_castpd_ps(both);
}

/// The lerps along red, then green, of colours 2H and 2H + 1: quarters hold the lower and the
/// upper blue value of colour 2H, then those of colour 2H + 1.
template <int H, int R, int G>
VL1_AVX512 __m512 along_red_and_green_avx512(const char* table, const cells_of_four& cells, __m512 f)
{
    constexpr int two_colours = H == 0 ? _MM_SHUFFLE(1, 1, 0, 0) : _MM_SHUFFLE(3, 3, 2, 2);
    const __m512 own = _mm512_shuffle_f32x4(f, f, two_colours);
    const __m512 fr = _mm512_permute_ps(own, _MM_SHUFFLE(R, R, R, R));
    const __m512 fg = _mm512_permute_ps(own, _MM_SHUFFLE(G, G, G, G));
    const __m512 green_low = lerp_avx512(two_pairs_avx512(table, cells, 2 * H, 0),
                                         two_pairs_avx512(table, cells, 2 * H, 1), fr);
    const __m512 green_high = lerp_avx512(two_pairs_avx512(table, cells, 2 * H, 2),
                                          two_pairs_avx512(table, cells, 2 * H, 3), fr);
    return lerp_avx512(green_low, green_high, fg);
}

/// The seven lerps of the scalar sampling step, red first, for the four colours of `cells`,
/// whose fractions stand in lanes R, G and B of `f`. Results in table order a, r, g, b; the
/// alpha lane is the interpolated table alpha, which callers replace.
template <int R, int G, int B>
VL1_AVX512 __m512 interpolate_four_avx512(const char* table, const cells_of_four& cells, __m512 f)
{
    const __m512 first = along_red_and_green_avx512<0, R, G>(table, cells, f);
    const __m512 second = along_red_and_green_avx512<1, R, G>(table, cells, f);
    const __m512 upper = _mm512_shuffle_f32x4(first, second, _MM_SHUFFLE(3, 1, 3, 1));
    // At the blue top both ends of the blue lerp are the entry at 31, the upper one of its pair.
    const __m512 lower =
        _mm512_mask_blend_ps(cells.blue_at_top, _mm512_shuffle_f32x4(first, second, _MM_SHUFFLE(2, 0, 2, 0)), upper);
    return lerp_avx512(lower, upper, _mm512_permute_ps(f, _MM_SHUFFLE(B, B, B, B)));
}

}  // namespace vl1::detail

#endif
