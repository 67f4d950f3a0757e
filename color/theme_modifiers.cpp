// The hue, chroma and luminance refinements of a theme.
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "color/hsl.h"
#include "color/unit_clamp.h"
#include "color/hueloom_theme_v1.h"

namespace vl1 {

namespace {

// The reference colours: the 16-bit-scale identity, built once for the process.
const lut_argb<32>& reference_identity()
{
    static const lut_argb<32> identity;
    return identity;
}

// The current colour's hue, saturation and lightness moved away from the reference by the
// given factors. The hue goes the shorter way round, clockwise when both ways are equal.
hsl_float scale_hsl_change(const hsl_float& ref, const hsl_float& cur, float hue, float chroma,
                           float luminance)
{
    hsl_float out;
    out.s = clamp_unit(ref.s + (cur.s - ref.s) * chroma);
    out.l = clamp_unit(ref.l + (cur.l - ref.l) * luminance);
    const float cw = std::fmod(cur.h + 360.0f - ref.h, 360.0f);
    const float ccw = std::fmod(ref.h + 360.0f - cur.h, 360.0f);
    const float delta = cw <= ccw ? cw : -ccw;
    out.h = std::fmod(delta * hue + (ref.h + 360.0f), 360.0f);
    return out;
}

}  // namespace

void hueloom_theme_v1::apply_theme_modifiers(lut_argb<32>& lut, float hue, float chroma, float luminance) const
{
    const lut_argb<32>& reference = reference_identity();
    if (lut.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");

    for (std::size_t i = 0; i < lut_argb<32>::entry_count; ++i) {
        const argb_float& ref = reference.data[i];
        argb_float& cur = lut.data[i];
        const hsl_float target = scale_hsl_change(rgb_to_hsl(ref.r, ref.g, ref.b),
                                                  rgb_to_hsl(cur.r, cur.g, cur.b), hue, chroma, luminance);
        const rgb_float rgb = hsl_to_rgb(target);
        cur.r = clamp_unit(rgb.r);
        cur.g = clamp_unit(rgb.g);
        cur.b = clamp_unit(rgb.b);
    }
}

}  // namespace vl1
