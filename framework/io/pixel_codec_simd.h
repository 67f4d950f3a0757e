// The pixel codec of pixel_codec.h in vector form: one pixel per SSE2 register, two per AVX2
// register, four per AVX-512F register, the channels r, g, b, a of each pixel in four
// neighbouring lanes. Every lane takes the scalar rule's operations in its order, so each
// form gives the bits of read_rgba_pixel and write_rgba_pixel. The wider forms carry their
// instruction set on the function (framework/simd_target.h); callers choose by CPU.
#pragma once

#if defined(__x86_64__)

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "framework/io/pixel_codec.h"
#include "framework/simd_target.h"

namespace vl1::simd {

// ---- SSE2: one pixel ------------------------------------------------------------------

// Reading: x < 1 ? x : 1 is minps(x, 1), x never being NaN here. For floats, NaN to +0.0,
// then 0 > v ? 0 : v (maxps(0, v) keeps -0.0) and 1 < v ? 1 : v.
template <rgba_depth Depth>
inline __m128 load_rgba_sse2(const std::byte* p)
{
    const __m128i zero = _mm_setzero_si128();
    if constexpr (Depth == rgba_depth::u8) {
        int32_t word;
        std::memcpy(&word, p, 4);
        const __m128i v = _mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(word), zero), zero);
        return _mm_min_ps(_mm_div_ps(_mm_cvtepi32_ps(v), _mm_set1_ps(255.0f)), _mm_set1_ps(1.0f));
    } else if constexpr (Depth == rgba_depth::u16) {
        const __m128i v = _mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), zero);
        return _mm_min_ps(_mm_div_ps(_mm_cvtepi32_ps(v), _mm_set1_ps(32767.0f)), _mm_set1_ps(1.0f));
    } else {
        __m128 v = _mm_loadu_ps(reinterpret_cast<const float*>(p));
        v = _mm_and_ps(_mm_cmpord_ps(v, v), v);
        v = _mm_max_ps(_mm_setzero_ps(), v);
        return _mm_min_ps(_mm_set1_ps(1.0f), v);
    }
}

// round(v * scale) half away from zero in double, saturated to 0..limit, NaN to 0. The
// product is exact in double and x + 0.5 is exact for these magnitudes, so truncating
// x + 0.5 rounds as std::round does.
inline __m128i to_integer_sse2(__m128 v, double scale, double limit)
{
    const auto convert = [&](__m128d x) {
        x = _mm_mul_pd(x, _mm_set1_pd(scale));
        x = _mm_and_pd(_mm_cmpgt_pd(x, _mm_setzero_pd()), x);  // NaN and negatives to 0
        x = _mm_min_pd(x, _mm_set1_pd(limit));
        return _mm_cvttpd_epi32(_mm_add_pd(x, _mm_set1_pd(0.5)));
    };
    return _mm_unpacklo_epi64(convert(_mm_cvtps_pd(v)), convert(_mm_cvtps_pd(_mm_movehl_ps(v, v))));
}

// 0..65535 in int32 lanes to uint16: packs_epi32 saturates signed, so shift into the signed
// range and back.
inline __m128i pack_u16_sse2(__m128i low, __m128i high)
{
    const __m128i bias = _mm_set1_epi32(32768);
    const __m128i words = _mm_packs_epi32(_mm_sub_epi32(low, bias), _mm_sub_epi32(high, bias));
    return _mm_xor_si128(words, _mm_set1_epi16(static_cast<short>(0x8000)));
}

template <rgba_depth Depth>
inline void store_rgba_sse2(std::byte* p, __m128 rgba)
{
    if constexpr (Depth == rgba_depth::u8) {
        const __m128i c = to_integer_sse2(rgba, 255.0, 255.0);
        const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(c, c), _mm_setzero_si128());
        const int32_t word = _mm_cvtsi128_si32(bytes);
        std::memcpy(p, &word, 4);
    } else if constexpr (Depth == rgba_depth::u16) {
        const __m128i c = to_integer_sse2(rgba, 32767.0, 65535.0);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p), pack_u16_sse2(c, c));
    } else {
        _mm_storeu_ps(reinterpret_cast<float*>(p), rgba);
    }
}

// ---- AVX2: two pixels -----------------------------------------------------------------

template <rgba_depth Depth>
VL1_AVX2 __m256 load_rgba_avx2(const std::byte* p)
{
    if constexpr (Depth == rgba_depth::u8) {
        const __m256i v = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
        return _mm256_min_ps(_mm256_div_ps(_mm256_cvtepi32_ps(v), _mm256_set1_ps(255.0f)), _mm256_set1_ps(1.0f));
    } else if constexpr (Depth == rgba_depth::u16) {
        const __m256i v = _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
        return _mm256_min_ps(_mm256_div_ps(_mm256_cvtepi32_ps(v), _mm256_set1_ps(32767.0f)), _mm256_set1_ps(1.0f));
    } else {
        __m256 v = _mm256_loadu_ps(reinterpret_cast<const float*>(p));
        v = _mm256_and_ps(_mm256_cmp_ps(v, v, _CMP_ORD_Q), v);
        v = _mm256_max_ps(_mm256_setzero_ps(), v);
        return _mm256_min_ps(_mm256_set1_ps(1.0f), v);
    }
}

VL1_AVX2 __m128i to_integer_avx2_half(__m256d x, double scale, double limit)
{
    x = _mm256_mul_pd(x, _mm256_set1_pd(scale));
    x = _mm256_and_pd(_mm256_cmp_pd(x, _mm256_setzero_pd(), _CMP_GT_OQ), x);
    x = _mm256_min_pd(x, _mm256_set1_pd(limit));
    return _mm256_cvttpd_epi32(_mm256_add_pd(x, _mm256_set1_pd(0.5)));
}

template <rgba_depth Depth>
VL1_AVX2 void store_rgba_avx2(std::byte* p, __m256 rgba)
{
    if constexpr (Depth == rgba_depth::f32) {
        _mm256_storeu_ps(reinterpret_cast<float*>(p), rgba);
    } else {
        constexpr double scale = Depth == rgba_depth::u8 ? 255.0 : 32767.0;
        constexpr double limit = Depth == rgba_depth::u8 ? 255.0 : 65535.0;
        const __m128i low = to_integer_avx2_half(_mm256_cvtps_pd(_mm256_castps256_ps128(rgba)), scale, limit);
        const __m128i high = to_integer_avx2_half(_mm256_cvtps_pd(_mm256_extractf128_ps(rgba, 1)), scale, limit);
        if constexpr (Depth == rgba_depth::u8) {
            const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(low, high), _mm_setzero_si128());
            _mm_storel_epi64(reinterpret_cast<__m128i*>(p), bytes);
        } else {
            _mm_storeu_si128(reinterpret_cast<__m128i*>(p), pack_u16_sse2(low, high));
        }
    }
}

// ---- AVX-512F: four pixels ------------------------------------------------------------

template <rgba_depth Depth>
VL1_AVX512 __m512 load_rgba_avx512(const std::byte* p)
{
    if constexpr (Depth == rgba_depth::u8) {
        const __m512i v = _mm512_cvtepu8_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
        return _mm512_min_ps(_mm512_div_ps(_mm512_cvtepi32_ps(v), _mm512_set1_ps(255.0f)), _mm512_set1_ps(1.0f));
    } else if constexpr (Depth == rgba_depth::u16) {
        const __m512i v = _mm512_cvtepu16_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
        return _mm512_min_ps(_mm512_div_ps(_mm512_cvtepi32_ps(v), _mm512_set1_ps(32767.0f)), _mm512_set1_ps(1.0f));
    } else {
        __m512 v = _mm512_loadu_ps(p);
        v = _mm512_maskz_mov_ps(_mm512_cmp_ps_mask(v, v, _CMP_ORD_Q), v);
        v = _mm512_max_ps(_mm512_setzero_ps(), v);
        return _mm512_min_ps(_mm512_set1_ps(1.0f), v);
    }
}

VL1_AVX512 __m256i to_integer_avx512_half(__m512d x, double scale, double limit)
{
    x = _mm512_mul_pd(x, _mm512_set1_pd(scale));
    x = _mm512_maskz_mov_pd(_mm512_cmp_pd_mask(x, _mm512_setzero_pd(), _CMP_GT_OQ), x);
    x = _mm512_min_pd(x, _mm512_set1_pd(limit));
    return _mm512_cvttpd_epi32(_mm512_add_pd(x, _mm512_set1_pd(0.5)));
}

// The integers are 0..255 or 0..65535 already, so the narrowing stores keep their low bits.
template <rgba_depth Depth>
VL1_AVX512 void store_rgba_avx512(std::byte* p, __m512 rgba)
{
    if constexpr (Depth == rgba_depth::f32) {
        _mm512_storeu_ps(p, rgba);
    } else {
        constexpr double scale = Depth == rgba_depth::u8 ? 255.0 : 32767.0;
        constexpr double limit = Depth == rgba_depth::u8 ? 255.0 : 65535.0;
        const __m256 low_half = _mm512_castps512_ps256(rgba);
        const __m256 high_half = _mm256_castpd_ps(_mm512_extractf64x4_pd(_mm512_castps_pd(rgba), 1));
        const __m256i low = to_integer_avx512_half(_mm512_cvtps_pd(low_half), scale, limit);
        const __m256i high = to_integer_avx512_half(_mm512_cvtps_pd(high_half), scale, limit);
        const __m512i all = _mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1);
        if constexpr (Depth == rgba_depth::u8)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm512_cvtepi32_epi8(all));
        else
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_cvtepi32_epi16(all));
    }
}

}  // namespace vl1::simd

#endif
