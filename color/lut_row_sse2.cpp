#include "color/lut_row_sse2.h"

#if defined(__SSE2__)

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "color/lut_sample_sse2.h"

namespace vl1::detail {

namespace {

// v < 1 ? v : 1 per lane, as the scalar reading rule.
inline __m128 at_most_one(__m128 v) { return _mm_min_ps(v, _mm_set1_ps(1.0f)); }

__m128 load_u8(const std::byte* p)
{
    int32_t word;
    std::memcpy(&word, p, 4);
    const __m128i zero = _mm_setzero_si128();
    const __m128i v = _mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(word), zero), zero);
    return at_most_one(_mm_div_ps(_mm_cvtepi32_ps(v), _mm_set1_ps(255.0f)));
}

__m128 load_u16(const std::byte* p)
{
    const __m128i v = _mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
    return at_most_one(_mm_div_ps(_mm_cvtepi32_ps(v), _mm_set1_ps(32767.0f)));
}

// NaN to +0.0, below 0 to 0, above 1 to 1; -0.0 passes as -0.0, as in the scalar rule.
__m128 load_f32(const std::byte* p)
{
    __m128 v = _mm_loadu_ps(reinterpret_cast<const float*>(p));
    v = _mm_and_ps(_mm_cmpord_ps(v, v), v);
    v = _mm_max_ps(_mm_setzero_ps(), v);  // 0 > v ? 0 : v
    return _mm_min_ps(_mm_set1_ps(1.0f), v);  // 1 < v ? 1 : v
}

__m128 load_pixel(rgba_depth depth, const std::byte* p)
{
    switch (depth) {
    case rgba_depth::u8: return load_u8(p);
    case rgba_depth::u16: return load_u16(p);
    case rgba_depth::f32: break;
    }
    return load_f32(p);
}

// round(v * scale) half away from zero in double, saturated to 0..limit, NaN to 0. The
// product is exact in double and v + 0.5 is exact for these magnitudes, so truncating
// v + 0.5 rounds as std::round does. Gives four int32 lanes.
__m128i to_integer(__m128 v, double scale, double limit)
{
    const __m128d s = _mm_set1_pd(scale);
    const __m128d top = _mm_set1_pd(limit);
    const __m128d half = _mm_set1_pd(0.5);
    const auto convert = [&](__m128d x) {
        x = _mm_mul_pd(x, s);
        x = _mm_and_pd(_mm_cmpgt_pd(x, _mm_setzero_pd()), x);  // NaN and negatives to 0
        x = _mm_min_pd(x, top);
        return _mm_cvttpd_epi32(_mm_add_pd(x, half));
    };
    const __m128i low = convert(_mm_cvtps_pd(v));
    const __m128i high = convert(_mm_cvtps_pd(_mm_movehl_ps(v, v)));
    return _mm_unpacklo_epi64(low, high);
}

void store_pixel(rgba_depth depth, std::byte* p, __m128 rgba)
{
    switch (depth) {
    case rgba_depth::u8: {
        const __m128i c = to_integer(rgba, 255.0, 255.0);
        const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(c, c), _mm_setzero_si128());
        const int32_t word = _mm_cvtsi128_si32(bytes);
        std::memcpy(p, &word, 4);
        return;
    }
    case rgba_depth::u16: {
        // packs_epi32 saturates signed: shift 0..65535 into the signed range and back.
        const __m128i bias32 = _mm_set1_epi32(32768);
        const __m128i c = _mm_sub_epi32(to_integer(rgba, 32767.0, 65535.0), bias32);
        const __m128i words = _mm_xor_si128(_mm_packs_epi32(c, c), _mm_set1_epi16(static_cast<short>(0x8000)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p), words);
        return;
    }
    case rgba_depth::f32:
        _mm_storeu_ps(reinterpret_cast<float*>(p), rgba);
        return;
    }
}

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
        const __m128 p0 = load_pixel(In, in);
        const __m128 p1 = load_pixel(In, in + in_step);
        const __m128 p2 = load_pixel(In, in + 2 * in_step);
        const __m128 p3 = load_pixel(In, in + 3 * in_step);
        __m128 r0, r1, r2, r3;
        trilinear_pair_sse2<0, 1, 2, true>(table, p0, p1, r0, r1);
        trilinear_pair_sse2<0, 1, 2, true>(table, p2, p3, r2, r3);
        store_pixel(Out, out, with_pixel_alpha(r0, p0));
        store_pixel(Out, out + out_step, with_pixel_alpha(r1, p1));
        store_pixel(Out, out + 2 * out_step, with_pixel_alpha(r2, p2));
        store_pixel(Out, out + 3 * out_step, with_pixel_alpha(r3, p3));
    }
    for (; i + 2 <= count; i += 2, in += 2 * in_step, out += 2 * out_step) {
        const __m128 first = load_pixel(In, in);
        const __m128 second = load_pixel(In, in + in_step);
        __m128 first_result, second_result;
        trilinear_pair_sse2<0, 1, 2, true>(table, first, second, first_result, second_result);
        store_pixel(Out, out, with_pixel_alpha(first_result, first));
        store_pixel(Out, out + out_step, with_pixel_alpha(second_result, second));
    }
    if (i < count) {
        const __m128 last = load_pixel(In, in);
        store_pixel(Out, out, with_pixel_alpha(trilinear_sse2<0, 1, 2, true>(table, last), last));
    }
}

template <rgba_depth In>
void apply_row_from(const argb_float* table, rgba_depth out_depth, const std::byte* in, std::byte* out,
                    std::size_t count)
{
    switch (out_depth) {
    case rgba_depth::u8: return apply_row<In, rgba_depth::u8>(table, in, out, count);
    case rgba_depth::u16: return apply_row<In, rgba_depth::u16>(table, in, out, count);
    case rgba_depth::f32: return apply_row<In, rgba_depth::f32>(table, in, out, count);
    }
}

}  // namespace

void apply_row_sse2(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                    std::byte* out, std::size_t count)
{
    switch (in_depth) {
    case rgba_depth::u8: return apply_row_from<rgba_depth::u8>(table, out_depth, in, out, count);
    case rgba_depth::u16: return apply_row_from<rgba_depth::u16>(table, out_depth, in, out, count);
    case rgba_depth::f32: return apply_row_from<rgba_depth::f32>(table, out_depth, in, out, count);
    }
}

}  // namespace vl1::detail

#else

namespace vl1::detail {

void apply_row_sse2(const argb_float*, rgba_depth, const std::byte*, rgba_depth, std::byte*, std::size_t) {}

}  // namespace vl1::detail

#endif
