// The AVX2 row kernel: two pixels per register, each in one 128-bit half, so every lane does
// what the same lane of the SSE2 kernel does. Four pixels per turn.
#include "color/lut_row_simd.h"

#if defined(__x86_64__)

#include <algorithm>

#include "color/lut_sample_avx2.h"
#include "framework/io/pixel_codec_simd.h"

namespace vl1::detail {

namespace {

// Table order a, r, g, b back to pixel order r, g, b with the pixel's own alpha.
VL1_AVX2 __m256 with_pixel_alpha(__m256 argb, __m256 rgba)
{
    const __m256 blue_alpha = _mm256_shuffle_ps(argb, rgba, _MM_SHUFFLE(3, 3, 3, 3));  // b, b, a, a
    return _mm256_shuffle_ps(argb, blue_alpha, _MM_SHUFFLE(2, 0, 2, 1));
}

// Pixels go in runs of up to 64: first every pixel of the run is read and its cell found,
// then every cell is interpolated. Finding a cell is a long chain of dependent steps and the
// table reads wait for its end; split apart, the reads of one pixel no longer queue behind the
// chain of the next, and many of them are under way at once. A run is read whole before any
// of it is written, so a row processed in place stays correct. Every loaded pixel lies in
// -0.0..1.0, which spares the grid position's upper clamp.
template <rgba_depth In, rgba_depth Out>
[[gnu::target("avx2")]] void apply_row(const argb_float* table, const std::byte* in, std::byte* out,
                                       std::size_t count)
{
    constexpr std::size_t in_step = rgba_pixel_bytes(In);
    constexpr std::size_t out_step = rgba_pixel_bytes(Out);
    constexpr std::size_t run_groups = 16;  // groups of four pixels
    const auto* bytes = reinterpret_cast<const char*>(table);
    __m256 pixels[2 * run_groups], fractions[2 * run_groups];
    four_cells cells[run_groups];
    std::size_t i = 0;
    while (i + 4 <= count) {
        const std::size_t groups = std::min(run_groups, (count - i) / 4);
        for (std::size_t g = 0; g < groups; ++g, in += 4 * in_step) {
            // A short row (a tile's) ends before the hardware's prefetch has learnt it.
            _mm_prefetch(reinterpret_cast<const char*>(in) + 1024, _MM_HINT_T0);
            pixels[2 * g] = simd::load_rgba_avx2<In>(in);
            pixels[2 * g + 1] = simd::load_rgba_avx2<In>(in + 2 * in_step);
            cells[g] = find_four_avx2<0, 1, 2, true>(pixels[2 * g], pixels[2 * g + 1], fractions[2 * g],
                                                      fractions[2 * g + 1]);
        }
        for (std::size_t g = 0; g < groups; ++g, out += 4 * out_step) {
            _mm_prefetch(reinterpret_cast<const char*>(out) + 1024, _MM_HINT_T0);
            const __m256 r01 = interpolate_two_avx2<0, 1, 2>(bytes, cells[g], 0, fractions[2 * g]);
            const __m256 r23 = interpolate_two_avx2<0, 1, 2>(bytes, cells[g], 1, fractions[2 * g + 1]);
            simd::store_rgba_avx2<Out>(out, with_pixel_alpha(r01, pixels[2 * g]));
            simd::store_rgba_avx2<Out>(out + 2 * out_step, with_pixel_alpha(r23, pixels[2 * g + 1]));
        }
        i += 4 * groups;
    }
    if (i < count)
        apply_row_sse2(table, In, in, Out, out, count - i);
}

}  // namespace

void apply_row_avx2(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                    std::byte* out, std::size_t count)
{
    with_depths(in_depth, out_depth,
                [&]<rgba_depth In, rgba_depth Out>() { apply_row<In, Out>(table, in, out, count); });
}

}  // namespace vl1::detail

#endif
