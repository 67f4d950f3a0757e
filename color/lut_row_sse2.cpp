#include "color/lut_row_sse2.h"

#if defined(__SSE2__)

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

namespace vl1::detail {

namespace {

// Lane orders: pixels arrive as r, g, b, a; table entries and the working colour are
// a, r, g, b.
inline __m128 rgba_to_argb(__m128 v) { return _mm_shuffle_ps(v, v, _MM_SHUFFLE(2, 1, 0, 3)); }
inline __m128 argb_to_rgba(__m128 v) { return _mm_shuffle_ps(v, v, _MM_SHUFFLE(0, 3, 2, 1)); }

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

inline __m128 lerp(__m128 low, __m128 high, __m128 f)
{
    return _mm_add_ps(_mm_mul_ps(_mm_sub_ps(high, low), f), low);
}

// sample_lut_32 with the colour in lanes a, r, g, b: the alpha lane is scaled and clamped
// along with the others but its index is never used.
__m128 sample(const argb_float* table, __m128 argb)
{
    __m128 x = _mm_mul_ps(argb, _mm_set1_ps(31.0f));
    x = _mm_and_ps(_mm_cmpgt_ps(x, _mm_setzero_ps()), x);  // x > 0 ? x : 0
    x = _mm_min_ps(x, _mm_set1_ps(31.0f));                  // x < 31 ? x : 31
    const __m128i i0 = _mm_cvttps_epi32(x);
    const __m128i i1 = _mm_add_epi32(_mm_min_epi16(i0, _mm_set1_epi32(30)), _mm_set1_epi32(1));
    const __m128 f = _mm_sub_ps(x, _mm_cvtepi32_ps(i0));

    alignas(16) int32_t lo[4];
    alignas(16) int32_t hi[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(lo), i0);
    _mm_store_si128(reinterpret_cast<__m128i*>(hi), i1);
    const int32_t r[2] = {lo[1] * 1024, hi[1] * 1024};
    const int32_t g[2] = {lo[2] * 32, hi[2] * 32};
    const int32_t b[2] = {lo[3], hi[3]};
    const auto at = [table](int32_t index) { return _mm_loadu_ps(&table[index].a); };

    const __m128 fr = _mm_shuffle_ps(f, f, _MM_SHUFFLE(1, 1, 1, 1));
    const __m128 fg = _mm_shuffle_ps(f, f, _MM_SHUFFLE(2, 2, 2, 2));
    const __m128 fb = _mm_shuffle_ps(f, f, _MM_SHUFFLE(3, 3, 3, 3));

    const __m128 g0b0 = lerp(at(r[0] + g[0] + b[0]), at(r[1] + g[0] + b[0]), fr);
    const __m128 g0b1 = lerp(at(r[0] + g[0] + b[1]), at(r[1] + g[0] + b[1]), fr);
    const __m128 g1b0 = lerp(at(r[0] + g[1] + b[0]), at(r[1] + g[1] + b[0]), fr);
    const __m128 g1b1 = lerp(at(r[0] + g[1] + b[1]), at(r[1] + g[1] + b[1]), fr);
    const __m128 b0 = lerp(g0b0, g1b0, fg);
    const __m128 b1 = lerp(g0b1, g1b1, fg);
    return _mm_move_ss(lerp(b0, b1, fb), argb);  // alpha of the input
}

}  // namespace

void apply_row_sse2(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                    std::byte* out, std::size_t count)
{
    const std::size_t in_step = rgba_pixel_bytes(in_depth);
    const std::size_t out_step = rgba_pixel_bytes(out_depth);
    for (std::size_t i = 0; i < count; ++i, in += in_step, out += out_step)
        store_pixel(out_depth, out, argb_to_rgba(sample(table, rgba_to_argb(load_pixel(in_depth, in)))));
}

}  // namespace vl1::detail

#else

namespace vl1::detail {

void apply_row_sse2(const argb_float*, rgba_depth, const std::byte*, rgba_depth, std::byte*, std::size_t) {}

}  // namespace vl1::detail

#endif
