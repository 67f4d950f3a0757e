// Hue, saturation and lightness of a colour, for the theme's hue, chroma and luminance
// refinements. Single precision in a fixed operation order: the refinements must give the
// same bits everywhere.
#pragma once

namespace vl1 {

struct hsl_float {
    float h;  // degrees, 0 <= h < 360 for colours in 0..1
    float s;  // 0..1
    float l;  // 0..1
};

/// r, g, b in 0..1. A grey (max = min) has hue 0 and saturation 0.
hsl_float rgb_to_hsl(float r, float g, float b);

struct rgb_float {
    float r;
    float g;
    float b;
};

/// The inverse of rgb_to_hsl; saturation 0 gives r = g = b = l. Not clamped.
rgb_float hsl_to_rgb(const hsl_float& hsl);

}  // namespace vl1
