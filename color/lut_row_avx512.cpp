// The AVX-512F row kernel: four pixels per register, each in one 128-bit quarter, so every
// lane does what the same lane of the SSE2 kernel does.
#include "color/lut_row_simd.h"

#if defined(__x86_64__)

// GCC 12's AVX-512 intrinsics take a deliberately undefined register as the source of their
// unmasked forms, which its own flow analysis then reports as maybe uninitialised.
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <algorithm>
#include <cstdint>

#include "framework/io/pixel_codec_simd.h"

namespace vl1::detail {

namespace {

// Byte offsets of each pixel's cell (an entry is 16 bytes, a blue step 16, a green step 512,
// a red step 16384): pixel k's lower corner at base[4k], its upper steps along red, green
// and blue at step[4k..4k+2], 0 at an axis' top.
struct cells_of_four {
    alignas(64) int32_t base[16];
    alignas(64) int32_t step[16];
};

VL1_AVX512 void find_cells(__m512i indices, cells_of_four& cells)
{
    const __m512i strides = _mm512_set4_epi32(0, 16, 512, 16384);
    const __m512i products = _mm512_mullo_epi32(indices, strides);
    const __m512i pairs = _mm512_add_epi32(products, _mm512_shuffle_epi32(products, _MM_PERM_CDAB));
    const __m512i sums = _mm512_add_epi32(pairs, _mm512_shuffle_epi32(pairs, _MM_PERM_BADC));
    _mm512_store_si512(cells.base, sums);
    const __mmask16 below_top = _mm512_cmplt_epi32_mask(indices, _mm512_set1_epi32(31));
    _mm512_store_si512(cells.step, _mm512_maskz_mov_epi32(below_top, strides));
}

// The four entries at the corners (pixel k's cell at `corner[k]`) stepped up along the axes
// in `use` (bit 0 red, 1 green, 2 blue).
VL1_AVX512 __m512 four_entries(const char* const* corner, const cells_of_four& cells, int use)
{
    const auto at = [&](int k) {
        std::size_t offset = 0;
        for (int axis = 0; axis < 3; ++axis)
            if (use & (1 << axis))
                offset += static_cast<std::size_t>(cells.step[4 * k + axis]);
        return _mm_loadu_ps(reinterpret_cast<const float*>(corner[k] + offset));
    };
    __m512 v = _mm512_castps128_ps512(at(0));
    v = _mm512_insertf32x4(v, at(1), 1);
    v = _mm512_insertf32x4(v, at(2), 2);
    return _mm512_insertf32x4(v, at(3), 3);
}

/// (high - low) * f + low.
VL1_AVX512 __m512 lerp(__m512 low, __m512 high, __m512 f)
{
    return _mm512_add_ps(_mm512_mul_ps(_mm512_sub_ps(high, low), f), low);
}

// One lerp along red: the entries with the axes in `use` stepped up, and those one red step above.
VL1_AVX512 __m512 along_red(const char* const* corner, const cells_of_four& cells, int use, __m512 fr)
{
    return lerp(four_entries(corner, cells, use), four_entries(corner, cells, use | 1), fr);
}

// The seven lerps of the scalar sampling step, red first; `f` holds the fractions in lanes
// r, g, b of each pixel.
VL1_AVX512 __m512 interpolate_four(const char* table, const cells_of_four& cells, __m512 f)
{
    constexpr int green = 2, blue = 4;
    const char* const corner[4] = {table + cells.base[0], table + cells.base[4], table + cells.base[8],
                                   table + cells.base[12]};
    const __m512 fr = _mm512_permute_ps(f, _MM_SHUFFLE(0, 0, 0, 0));
    const __m512 fg = _mm512_permute_ps(f, _MM_SHUFFLE(1, 1, 1, 1));
    const __m512 fb = _mm512_permute_ps(f, _MM_SHUFFLE(2, 2, 2, 2));
    const __m512 g0b0 = along_red(corner, cells, 0, fr);
    const __m512 g0b1 = along_red(corner, cells, blue, fr);
    const __m512 g1b0 = along_red(corner, cells, green, fr);
    const __m512 g1b1 = along_red(corner, cells, green | blue, fr);
    const __m512 b0 = lerp(g0b0, g1b0, fg);
    const __m512 b1 = lerp(g0b1, g1b1, fg);
    return lerp(b0, b1, fb);
}

// Table order a, r, g, b back to pixel order r, g, b with the pixel's own alpha.
VL1_AVX512 __m512 with_pixel_alpha(__m512 argb, __m512 rgba)
{
    const __m512 blue_alpha = _mm512_shuffle_ps(argb, rgba, _MM_SHUFFLE(3, 3, 3, 3));  // b, b, a, a
    return _mm512_shuffle_ps(argb, blue_alpha, _MM_SHUFFLE(2, 0, 2, 1));
}

// Pixels go in runs of up to 64, as in the AVX2 kernel: first every pixel of the run is read
// and its cell found, then every cell is interpolated, so that the table reads of one pixel
// don't queue behind the long chain that finds the next one's cell. A run is read whole
// before any of it is written, so a row processed in place stays correct. A loaded pixel lies
// in -0.0..1.0: x = c * 31, then x > 0 ? x : 0, never above 31.
template <rgba_depth In, rgba_depth Out>
[[gnu::target("avx512f")]] void apply_row(const argb_float* table, const std::byte* in, std::byte* out,
                                          std::size_t count)
{
    constexpr std::size_t in_step = rgba_pixel_bytes(In);
    constexpr std::size_t out_step = rgba_pixel_bytes(Out);
    constexpr std::size_t run_groups = 16;  // groups of four pixels, one register each
    const auto* bytes = reinterpret_cast<const char*>(table);
    __m512 pixels[run_groups], fractions[run_groups];
    cells_of_four cells[run_groups];
    std::size_t i = 0;
    while (i + 4 <= count) {
        const std::size_t groups = std::min(run_groups, (count - i) / 4);
        for (std::size_t g = 0; g < groups; ++g, in += 4 * in_step) {
            // A short row (a tile's) ends before the hardware's prefetch has learnt it.
            _mm_prefetch(reinterpret_cast<const char*>(in) + 1024, _MM_HINT_T0);
            pixels[g] = simd::load_rgba_avx512<In>(in);
            const __m512 x = _mm512_max_ps(_mm512_mul_ps(pixels[g], _mm512_set1_ps(31.0f)), _mm512_setzero_ps());
            const __m512i indices = _mm512_cvttps_epi32(x);
            fractions[g] = _mm512_sub_ps(x, _mm512_cvtepi32_ps(indices));
            find_cells(indices, cells[g]);
        }
        for (std::size_t g = 0; g < groups; ++g, out += 4 * out_step) {
            _mm_prefetch(reinterpret_cast<const char*>(out) + 1024, _MM_HINT_T0);
            const __m512 graded = interpolate_four(bytes, cells[g], fractions[g]);
            simd::store_rgba_avx512<Out>(out, with_pixel_alpha(graded, pixels[g]));
        }
        i += 4 * groups;
    }
    if (i < count)
        apply_row_sse2(table, In, in, Out, out, count - i);
}

}  // namespace

void apply_row_avx512(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                      std::byte* out, std::size_t count)
{
    with_depths(in_depth, out_depth,
                [&]<rgba_depth In, rgba_depth Out>() { apply_row<In, Out>(table, in, out, count); });
}

}  // namespace vl1::detail

#endif
