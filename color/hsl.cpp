#include "color/hsl.h"

#include <algorithm>

namespace vl1 {

hsl_float rgb_to_hsl(float r, float g, float b)
{
    const float max = std::max(std::max(r, g), b);
    const float min = std::min(std::min(r, g), b);
    const float l = (max + min) * 0.5f;
    if (max == min)
        return {0.0f, 0.0f, l};

    const float d = max - min;
    const float s = l > 0.5f ? d / (2.0f - max - min) : d / (max + min);
    float h;
    if (max == r) {
        h = (g - b) / d;
        if (g < b)
            h += 6.0f;
    } else if (max == g) {
        h = (b - r) / d + 2.0f;
    } else {
        h = (r - g) / d + 4.0f;
    }
    return {h / 6.0f * 360.0f, s, l};
}

namespace {

// One channel at hue position u (0..1) between the levels p and q.
float hsl_channel(float p, float q, float u)
{
    if (u < 0.0f)
        u += 1.0f;
    if (u > 1.0f)
        u -= 1.0f;
    if (u < 0.16666667f)
        return p + (q - p) * 6.0f * u;
    if (u < 0.5f)
        return q;
    if (u < 0.6666667f)
        return p + (0.6666667f - u) * (q - p) * 6.0f;
    return p;
}

}  // namespace

rgb_float hsl_to_rgb(const hsl_float& hsl)
{
    if (hsl.s == 0.0f)
        return {hsl.l, hsl.l, hsl.l};

    const float q = hsl.l < 0.5f ? hsl.l * (hsl.s + 1.0f) : hsl.l + hsl.s - hsl.l * hsl.s;
    const float p = 2.0f * hsl.l - q;
    const float t = hsl.h / 360.0f;
    // A third of the hue circle, as the float nearest to 1/3.
    constexpr float third = 0.33333334f;
    return {hsl_channel(p, q, t + third), hsl_channel(p, q, t), hsl_channel(p, q, t - third)};
}

}  // namespace vl1
