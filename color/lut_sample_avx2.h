// The trilinear sampling step of lut_sample_kernel.h for four colours in two AVX2 registers,
// one colour per 128-bit half: every lane does what the same lane of trilinear_sse2 does, on
// the same operands in the same order, so each colour gets the scalar step's bits. Shared by
// the AVX2 row kernel and the mapping of a table through another.
#pragma once

#if defined(__x86_64__)

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "color/argb_float_ops.h"
#include "framework/simd_target.h"

namespace vl1::detail {

/// Byte offsets of four colours' cells: the lower corner of colour k at base[k], its upper
/// neighbour along red, green and blue at step[k][0..2] bytes further (0 at an axis' top).
/// An entry is 16 bytes, a blue step 16, a green step 512, a red step 16384.
struct four_cells {
    std::size_t base[4];
    std::size_t step[4][3];
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

/// The cells of the colours whose grid indices (0..31 in lanes R, G and B of each half) are
/// in `first_pair` (colours 0 and 1) and `second_pair` (2 and 3). The indices are packed
/// into 16-bit lanes, so one multiply-add gives two partial offsets per colour.
template <int R, int G, int B>
VL1_AVX2 four_cells find_cells_avx2(__m256i first_pair, __m256i second_pair)
{
    const auto stride = [](int lane) -> short { return lane == R ? 16384 : lane == G ? 512 : lane == B ? 16 : 0; };
    const __m256i indices = _mm256_packs_epi32(first_pair, second_pair);  // colours 0, 2 | 1, 3
    const __m256i strides = _mm256_setr_epi16(stride(0), stride(1), stride(2), stride(3), stride(0), stride(1),
                                              stride(2), stride(3), stride(0), stride(1), stride(2), stride(3),
                                              stride(0), stride(1), stride(2), stride(3));
    const __m256i products = _mm256_madd_epi16(indices, strides);
    const __m256i sums = _mm256_add_epi32(products, _mm256_shuffle_epi32(products, _MM_SHUFFLE(2, 3, 0, 1)));
    const __m256i steps = _mm256_and_si256(_mm256_cmpgt_epi16(_mm256_set1_epi16(31), indices), strides);
    alignas(32) int32_t base[8];
    alignas(32) uint16_t step[16];
    _mm256_store_si256(reinterpret_cast<__m256i*>(base), sums);
    _mm256_store_si256(reinterpret_cast<__m256i*>(step), steps);
    four_cells cells;
    constexpr int half[4] = {0, 2, 1, 3};  // where colour k stands among the packed groups of four
    for (int k = 0; k < 4; ++k) {
        cells.base[k] = static_cast<uint32_t>(base[2 * half[k]]);
        cells.step[k][0] = step[4 * half[k] + R];
        cells.step[k][1] = step[4 * half[k] + G];
        cells.step[k][2] = step[4 * half[k] + B];
    }
    return cells;
}

VL1_AVX2 __m256 two_entries(const char* first, const char* second)
{
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(reinterpret_cast<const float*>(first))),
                                _mm_loadu_ps(reinterpret_cast<const float*>(second)), 1);
}

/// (high - low) * f + low.
VL1_AVX2 __m256 lerp_avx2(__m256 low, __m256 high, __m256 f)
{
    return _mm256_add_ps(_mm256_mul_ps(_mm256_sub_ps(high, low), f), low);
}

/// The seven lerps of sample_lut_32, red first, for colours `a` and `b` of `cells`, whose
/// fractions stand in lanes R, G and B of each half of `f`.
template <int R, int G, int B>
VL1_AVX2 __m256 interpolate_two_avx2(const char* table, const four_cells& cells, int a, int b, __m256 f)
{
    const char* ca = table + cells.base[a];
    const char* cb = table + cells.base[b];
    const std::size_t ar = cells.step[a][0], ag = cells.step[a][1], ab = cells.step[a][2];
    const std::size_t br = cells.step[b][0], bg = cells.step[b][1], bb = cells.step[b][2];
    const __m256 fr = _mm256_permute_ps(f, _MM_SHUFFLE(R, R, R, R));
    const __m256 fg = _mm256_permute_ps(f, _MM_SHUFFLE(G, G, G, G));
    const __m256 fb = _mm256_permute_ps(f, _MM_SHUFFLE(B, B, B, B));

    const __m256 g0b0 = lerp_avx2(two_entries(ca, cb), two_entries(ca + ar, cb + br), fr);
    const __m256 g0b1 = lerp_avx2(two_entries(ca + ab, cb + bb), two_entries(ca + ar + ab, cb + br + bb), fr);
    const __m256 g1b0 = lerp_avx2(two_entries(ca + ag, cb + bg), two_entries(ca + ar + ag, cb + br + bg), fr);
    const __m256 g1b1 =
        lerp_avx2(two_entries(ca + ag + ab, cb + bg + bb), two_entries(ca + ar + ag + ab, cb + br + bg + bb), fr);
    const __m256 b0 = lerp_avx2(g0b0, g1b0, fg);
    const __m256 b1 = lerp_avx2(g0b1, g1b1, fg);
    return lerp_avx2(b0, b1, fb);
}

/// The first half of trilinear_four_avx2: the cells of four colours and their fractions.
template <int R, int G, int B, bool InUnitRange = false>
VL1_AVX2 four_cells find_four_avx2(__m256 first_pair, __m256 second_pair, __m256& first_f, __m256& second_f)
{
    const __m256 x01 = grid_position_avx2<InUnitRange>(first_pair);
    const __m256 x23 = grid_position_avx2<InUnitRange>(second_pair);
    const __m256i i01 = _mm256_cvttps_epi32(x01);
    const __m256i i23 = _mm256_cvttps_epi32(x23);
    first_f = _mm256_sub_ps(x01, _mm256_cvtepi32_ps(i01));
    second_f = _mm256_sub_ps(x23, _mm256_cvtepi32_ps(i23));
    return find_cells_avx2<R, G, B>(i01, i23);
}

/// The trilinear values of the 32768-entry `table` at four colours, two per register, whose
/// red, green and blue stand in lanes R, G and B of each half. Results in table order
/// a, r, g, b; their alpha lane is the interpolated table alpha, which callers replace.
template <int R, int G, int B, bool InUnitRange = false>
VL1_AVX2 void trilinear_four_avx2(const argb_float* table, __m256 first_pair, __m256 second_pair, __m256& first_out,
                                  __m256& second_out)
{
    __m256 f01, f23;
    const four_cells cells = find_four_avx2<R, G, B, InUnitRange>(first_pair, second_pair, f01, f23);
    const auto* bytes = reinterpret_cast<const char*>(table);
    first_out = interpolate_two_avx2<R, G, B>(bytes, cells, 0, 1, f01);
    second_out = interpolate_two_avx2<R, G, B>(bytes, cells, 2, 3, f23);
}

}  // namespace vl1::detail

#endif
