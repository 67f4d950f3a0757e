// The AVX-512F row kernel: pixels are read, placed on the grid and written four per register,
// each in one 128-bit quarter; the sampling step (lut_sample_avx512.h) keeps the scalar
// step's operations on every value.
#include "color/lut_row_simd.h"

#if defined(__x86_64__)

// GCC 12's AVX-512 intrinsics take a deliberately undefined register as the source of their
// unmasked forms, which its own flow analysis then reports as maybe uninitialised.
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <algorithm>
#include <cstdint>

#include "color/lut_sample_avx512.h"
#include "framework/io/pixel_codec_simd.h"

namespace vl1::detail {

namespace {

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
            find_cells_avx512<0, 1, 2>(indices, cells[g]);
        }
        for (std::size_t g = 0; g < groups; ++g, out += 4 * out_step) {
            _mm_prefetch(reinterpret_cast<const char*>(out) + 1024, _MM_HINT_T0);
            const __m512 graded = interpolate_four_avx512<0, 1, 2>(bytes, cells[g], fractions[g]);
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
