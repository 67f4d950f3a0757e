// The trilinear sampling step of lut_sample_kernel.h for four colours in one AVX-512F
// register, one colour per 128-bit quarter: every lane does what the same lane of
// trilinear_sse2 does, on the same operands in the same order, so each colour gets the scalar
// step's bits. The colours' red, green and blue stand in lanes R, G and B of each quarter
// (0, 1, 2 for pixels, 1, 2, 3 for table entries). Shared by the AVX-512F row kernel and the
// mapping of a table through another.
#pragma once

#if defined(__x86_64__)

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "framework/simd_target.h"

namespace vl1::detail {

/// Byte offsets of each colour's cell (an entry is 16 bytes, a blue step 16, a green step 512,
/// a red step 16384): colour k's lower corner at base[4k], its upper step along the axis in
/// lane L at step[4k + L], 0 at an axis' top.
struct cells_of_four {
    alignas(64) int32_t base[16];
    alignas(64) int32_t step[16];
};

/// The cells of the four colours whose grid indices (0..31) stand in lanes R, G and B.
template <int R, int G, int B>
VL1_AVX512 void find_cells_avx512(__m512i indices, cells_of_four& cells)
{
    constexpr auto stride = [](int lane) { return lane == R ? 16384 : lane == G ? 512 : lane == B ? 16 : 0; };
    const __m512i strides = _mm512_set4_epi32(stride(3), stride(2), stride(1), stride(0));
    const __m512i products = _mm512_mullo_epi32(indices, strides);
    const __m512i pairs = _mm512_add_epi32(products, _mm512_shuffle_epi32(products, _MM_PERM_CDAB));
    const __m512i sums = _mm512_add_epi32(pairs, _mm512_shuffle_epi32(pairs, _MM_PERM_BADC));
    _mm512_store_si512(cells.base, sums);
    const __mmask16 below_top = _mm512_cmplt_epi32_mask(indices, _mm512_set1_epi32(31));
    _mm512_store_si512(cells.step, _mm512_maskz_mov_epi32(below_top, strides));
}

/// The four entries at the corners (colour k's cell at `corner[k]`) stepped up along the axes
/// in `use` (bit 0 red, 1 green, 2 blue).
template <int R, int G, int B>
VL1_AVX512 __m512 four_entries_avx512(const char* const* corner, const cells_of_four& cells, int use)
{
    constexpr int lanes[3] = {R, G, B};
    const auto at = [&](int k) {
        std::size_t offset = 0;
        for (int axis = 0; axis < 3; ++axis)
            if (use & (1 << axis))
                offset += static_cast<std::size_t>(cells.step[4 * k + lanes[axis]]);
        return _mm_loadu_ps(reinterpret_cast<const float*>(corner[k] + offset));
    };
    __m512 v = _mm512_castps128_ps512(at(0));
    v = _mm512_insertf32x4(v, at(1), 1);
    v = _mm512_insertf32x4(v, at(2), 2);
    return _mm512_insertf32x4(v, at(3), 3);
}

/// (high - low) * f + low.
VL1_AVX512 __m512 lerp_avx512(__m512 low, __m512 high, __m512 f)
{
    return _mm512_add_ps(_mm512_mul_ps(_mm512_sub_ps(high, low), f), low);
}

/// One lerp along red: the entries with the axes in `use` stepped up, and those one red step above.
template <int R, int G, int B>
VL1_AVX512 __m512 along_red_avx512(const char* const* corner, const cells_of_four& cells, int use, __m512 fr)
{
    return lerp_avx512(four_entries_avx512<R, G, B>(corner, cells, use),
                       four_entries_avx512<R, G, B>(corner, cells, use | 1), fr);
}

/// The seven lerps of the scalar sampling step, red first, for the four colours of `cells`,
/// whose fractions stand in lanes R, G and B of `f`. Results in table order a, r, g, b; the
/// alpha lane is the interpolated table alpha, which callers replace.
template <int R, int G, int B>
VL1_AVX512 __m512 interpolate_four_avx512(const char* table, const cells_of_four& cells, __m512 f)
{
    constexpr int green = 2, blue = 4;
    const char* const corner[4] = {table + cells.base[0], table + cells.base[4], table + cells.base[8],
                                   table + cells.base[12]};
    const __m512 fr = _mm512_permute_ps(f, _MM_SHUFFLE(R, R, R, R));
    const __m512 fg = _mm512_permute_ps(f, _MM_SHUFFLE(G, G, G, G));
    const __m512 fb = _mm512_permute_ps(f, _MM_SHUFFLE(B, B, B, B));
    const __m512 g0b0 = along_red_avx512<R, G, B>(corner, cells, 0, fr);
    const __m512 g0b1 = along_red_avx512<R, G, B>(corner, cells, blue, fr);
    const __m512 g1b0 = along_red_avx512<R, G, B>(corner, cells, green, fr);
    const __m512 g1b1 = along_red_avx512<R, G, B>(corner, cells, green | blue, fr);
    const __m512 b0 = lerp_avx512(g0b0, g1b0, fg);
    const __m512 b1 = lerp_avx512(g0b1, g1b1, fg);
    return lerp_avx512(b0, b1, fb);
}

}  // namespace vl1::detail

#endif
