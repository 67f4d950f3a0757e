#include "gui/display_pixels.h"

#include <emmintrin.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <cmath>

namespace vl1::gui {
namespace {

uint8_t to_byte(float v)
{
    return static_cast<uint8_t>(std::isnan(v) ? 0.0f : std::clamp(v, 0.0f, 1.0f) * 255.0f);
}

/// r, g, b, a floats to b, g, r, a integers 0..255: clamped (max answers its second operand
/// for a NaN, so NaN becomes 0), scaled and truncated as to_byte does.
__m128i to_bgra(__m128 rgba)
{
    const __m128 bgra = _mm_shuffle_ps(rgba, rgba, _MM_SHUFFLE(3, 0, 1, 2));
    const __m128 unit = _mm_min_ps(_mm_max_ps(bgra, _mm_setzero_ps()), _mm_set1_ps(1.0f));
    return _mm_cvttps_epi32(_mm_mul_ps(unit, _mm_set1_ps(255.0f)));
}

/// Four pixels' b, g, r, a integers as four xRGB words.
void store_words(uint32_t* out, __m128i p0, __m128i p1, __m128i p2, __m128i p3)
{
    const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(p0, p1), _mm_packs_epi32(p2, p3));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_or_si128(bytes, _mm_set1_epi32(int(0xff000000u))));
}

uint32_t to_word(__m128i bgra)
{
    const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(bgra, bgra), bgra);
    return uint32_t(_mm_cvtsi128_si32(bytes)) | 0xff000000u;
}

/// One row of the preview's own pictures (r, g, b, a floats), pixel for pixel.
void convert_rgba_f32_row(const float* in, uint32_t* out, std::size_t width)
{
    std::size_t x = 0;
    for (; x + 4 <= width; x += 4, in += 16) {
        store_words(out + x, to_bgra(_mm_loadu_ps(in)), to_bgra(_mm_loadu_ps(in + 4)), to_bgra(_mm_loadu_ps(in + 8)),
                    to_bgra(_mm_loadu_ps(in + 12)));
    }
    for (; x < width; ++x, in += 4)
        out[x] = to_word(to_bgra(_mm_loadu_ps(in)));
}

/// One row of k x k box means of an r, g, b, a float picture.
void reduce_rgba_f32_row(const vl1::image& picture, std::size_t oy, std::size_t k, uint32_t* out, std::size_t width)
{
    const std::size_t y0 = oy * k, y1 = std::min<std::size_t>(y0 + k, picture.height);
    for (std::size_t ox = 0; ox < width; ++ox) {
        const std::size_t x0 = ox * k, x1 = std::min<std::size_t>(x0 + k, picture.width);
        __m128 sum = _mm_setzero_ps();
        for (std::size_t y = y0; y < y1; ++y) {
            const auto* row = reinterpret_cast<const float*>(picture.row(y));
            for (std::size_t x = x0; x < x1; ++x)
                sum = _mm_add_ps(sum, _mm_loadu_ps(row + 4 * x));
        }
        const auto count = static_cast<float>((y1 - y0) * (x1 - x0));
        out[ox] = to_word(to_bgra(_mm_div_ps(sum, _mm_set1_ps(count))));
    }
}

/// Any other format, read pixel by pixel.
void reduce_any_row(const vl1::image& picture, std::size_t oy, std::size_t k, uint32_t* out, std::size_t width)
{
    const std::size_t y0 = oy * k, y1 = std::min<std::size_t>(y0 + k, picture.height);
    for (std::size_t ox = 0; ox < width; ++ox) {
        const std::size_t x0 = ox * k, x1 = std::min<std::size_t>(x0 + k, picture.width);
        float r = 0, g = 0, b = 0;
        for (std::size_t y = y0; y < y1; ++y)
            for (std::size_t x = x0; x < x1; ++x) {
                const argb_float p = picture.read_pixel(x, y);
                r += p.r, g += p.g, b += p.b;
            }
        const auto count = static_cast<float>((y1 - y0) * (x1 - x0));
        out[ox] = 0xff000000u | uint32_t(to_byte(r / count)) << 16 | uint32_t(to_byte(g / count)) << 8 |
                  to_byte(b / count);
    }
}

}  // namespace

display_size convert_to_display(const vl1::image& picture, std::vector<uint32_t>& out, int reduction)
{
    const std::size_t k = static_cast<std::size_t>(std::max(1, reduction));
    const display_size size{(picture.width + k - 1) / k, (picture.height + k - 1) / k};
    out.resize(size.width * size.height);
    const bool floats = picture.format == pixel_format::rgba_f32;
    tbb::parallel_for(std::size_t{0}, size.height, [&](std::size_t y) {
        uint32_t* row = out.data() + y * size.width;
        if (floats && k == 1)
            convert_rgba_f32_row(reinterpret_cast<const float*>(picture.row(y)), row, size.width);
        else if (floats)
            reduce_rgba_f32_row(picture, y, k, row, size.width);
        else
            reduce_any_row(picture, y, k, row, size.width);
    });
    return size;
}

}  // namespace vl1::gui
