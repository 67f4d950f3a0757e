// The SSE2 row kernel: one pixel per register, the four channels in the lanes.
#include "color/lut_row_simd.h"

#if defined(__x86_64__)

#include "color/lut_sample_sse2.h"
#include "framework/io/pixel_codec_simd.h"

namespace vl1::detail {

namespace {

// The working colour stays in pixel order r, g, b, a; a sample comes back in table order
// a, r, g, b and leaves as r, g, b with the pixel's own alpha.
inline __m128 with_pixel_alpha(__m128 argb, __m128 rgba)
{
    const __m128 blue_alpha = _mm_shuffle_ps(argb, rgba, _MM_SHUFFLE(3, 3, 3, 3));  // b, b, a, a
    return _mm_shuffle_ps(argb, blue_alpha, _MM_SHUFFLE(2, 0, 2, 1));
}

// One loop per pair of depths, so that no pixel pays for the choice. Four pixels per turn,
// their cells found two at a time: one pixel's table reads overlap another's chain of
// lerps. All four are read before any is written, so a row processed in place stays
// correct. Every loaded pixel lies in -0.0..1.0, which spares the grid position's upper clamp.
template <rgba_depth In, rgba_depth Out>
void apply_row(const argb_float* table, const std::byte* in, std::byte* out, std::size_t count)
{
    constexpr std::size_t in_step = rgba_pixel_bytes(In);
    constexpr std::size_t out_step = rgba_pixel_bytes(Out);
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4, in += 4 * in_step, out += 4 * out_step) {
        const __m128 p0 = simd::load_rgba_sse2<In>(in);
        const __m128 p1 = simd::load_rgba_sse2<In>(in + in_step);
        const __m128 p2 = simd::load_rgba_sse2<In>(in + 2 * in_step);
        const __m128 p3 = simd::load_rgba_sse2<In>(in + 3 * in_step);
        __m128 r0, r1, r2, r3;
        trilinear_pair_sse2<0, 1, 2, true>(table, p0, p1, r0, r1);
        trilinear_pair_sse2<0, 1, 2, true>(table, p2, p3, r2, r3);
        simd::store_rgba_sse2<Out>(out, with_pixel_alpha(r0, p0));
        simd::store_rgba_sse2<Out>(out + out_step, with_pixel_alpha(r1, p1));
        simd::store_rgba_sse2<Out>(out + 2 * out_step, with_pixel_alpha(r2, p2));
        simd::store_rgba_sse2<Out>(out + 3 * out_step, with_pixel_alpha(r3, p3));
    }
    for (; i < count; ++i, in += in_step, out += out_step) {
        const __m128 pixel = simd::load_rgba_sse2<In>(in);
        simd::store_rgba_sse2<Out>(out, with_pixel_alpha(trilinear_sse2<0, 1, 2, true>(table, pixel), pixel));
    }
}

}  // namespace

void apply_row_sse2(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                    std::byte* out, std::size_t count)
{
    with_depths(in_depth, out_depth,
                [&]<rgba_depth In, rgba_depth Out>() { apply_row<In, Out>(table, in, out, count); });
}

}  // namespace vl1::detail

#endif
