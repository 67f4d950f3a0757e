#include "ofx/ofx_pixel_io.h"

#include <cmath>
#include <cstring>

namespace vl1 {
namespace {

float unit_from_byte(uint8_t v) { return static_cast<float>(std::fmin(v / 255.0, 1.0)); }
float unit_from_short(uint16_t v) { return static_cast<float>(std::fmin(v / 32767.0, 1.0)); }
float unit_from_float(float v) { return std::isnan(v) ? 0.0f : (v < 0.0f ? 0.0f : (v > 1.0f ? 1.0f : v)); }

/// round(value * scale) half away from zero, kept inside 0..limit; NaN gives 0.
double scaled(float value, double scale, double limit)
{
    const double v = std::round(value * scale);
    return v > 0.0 ? (v < limit ? v : limit) : 0.0;
}

}  // namespace

argb_float read_pixel(int depth, const uint8_t* pixel)
{
    switch (depth) {
    case 8:
        return {unit_from_byte(pixel[3]), unit_from_byte(pixel[0]), unit_from_byte(pixel[1]), unit_from_byte(pixel[2])};
    case 16: {
        uint16_t c[4];
        std::memcpy(c, pixel, sizeof c);
        return {unit_from_short(c[3]), unit_from_short(c[0]), unit_from_short(c[1]), unit_from_short(c[2])};
    }
    case 32: {
        float c[4];
        std::memcpy(c, pixel, sizeof c);
        return {unit_from_float(c[3]), unit_from_float(c[0]), unit_from_float(c[1]), unit_from_float(c[2])};
    }
    default:
        return {0.0f, 0.0f, 0.0f, 0.0f};
    }
}

void write_pixel(int depth, uint8_t* pixel, const argb_float& value)
{
    const float rgba[4] = {value.r, value.g, value.b, value.a};
    switch (depth) {
    case 8:
        for (int c = 0; c < 4; ++c)
            pixel[c] = static_cast<uint8_t>(scaled(rgba[c], 255.0, 255.0));
        break;
    case 16: {
        uint16_t out[4];
        for (int c = 0; c < 4; ++c)
            out[c] = static_cast<uint16_t>(scaled(rgba[c], 32767.0, 65535.0));
        std::memcpy(pixel, out, sizeof out);
        break;
    }
    case 32:
        std::memcpy(pixel, rgba, sizeof rgba);
        break;
    default:
        break;
    }
}

}  // namespace vl1
