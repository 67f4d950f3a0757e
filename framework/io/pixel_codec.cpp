#include "framework/io/pixel_codec.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace vl1 {

namespace {

float from_u8(uint8_t v)
{
    const float x = static_cast<float>(v) / 255.0f;
    return x < 1.0f ? x : 1.0f;
}

float from_u16(uint16_t v)
{
    const float x = static_cast<float>(v) / 32767.0f;
    return x < 1.0f ? x : 1.0f;
}

float from_f32(float v)
{
    if (std::isnan(v))
        return 0.0f;
    return v < 0.0f ? 0.0f : (v > 1.0f ? 1.0f : v);
}

// round(value * scale) half away from zero, saturated to 0..limit; NaN gives 0. The
// product is exact in double, so the rounding sees the true value.
double to_integer(float value, double scale, double limit)
{
    const double v = std::round(static_cast<double>(value) * scale);
    return v > 0.0 ? (v < limit ? v : limit) : 0.0;
}

}  // namespace

argb_float read_rgba_pixel(rgba_depth depth, const void* pixel)
{
    switch (depth) {
    case rgba_depth::u8: {
        uint8_t c[4];
        std::memcpy(c, pixel, sizeof c);
        return {from_u8(c[3]), from_u8(c[0]), from_u8(c[1]), from_u8(c[2])};
    }
    case rgba_depth::u16: {
        uint16_t c[4];
        std::memcpy(c, pixel, sizeof c);
        return {from_u16(c[3]), from_u16(c[0]), from_u16(c[1]), from_u16(c[2])};
    }
    case rgba_depth::f32:
        break;
    }
    float c[4];
    std::memcpy(c, pixel, sizeof c);
    return {from_f32(c[3]), from_f32(c[0]), from_f32(c[1]), from_f32(c[2])};
}

void write_rgba_pixel(rgba_depth depth, void* pixel, const argb_float& value)
{
    const float rgba[4] = {value.r, value.g, value.b, value.a};
    switch (depth) {
    case rgba_depth::u8: {
        uint8_t c[4];
        for (int i = 0; i < 4; ++i)
            c[i] = static_cast<uint8_t>(to_integer(rgba[i], 255.0, 255.0));
        std::memcpy(pixel, c, sizeof c);
        return;
    }
    case rgba_depth::u16: {
        uint16_t c[4];
        for (int i = 0; i < 4; ++i)
            c[i] = static_cast<uint16_t>(to_integer(rgba[i], 32767.0, 65535.0));
        std::memcpy(pixel, c, sizeof c);
        return;
    }
    case rgba_depth::f32:
        std::memcpy(pixel, rgba, sizeof rgba);
        return;
    }
}

}  // namespace vl1
