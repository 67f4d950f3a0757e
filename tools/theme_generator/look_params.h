// The parameters of one look, as a theme's recipe states them. Lightness, chroma and hue
// are those of OKLab (oklab.h): lightness 0..1, chroma 0 to about 0.3, hue in degrees
// (about 30 red, 55 orange and skin, 110 yellow, 142 green, 195 cyan, 264 blue, 328 magenta).
#pragma once

#include <string>
#include <vector>

namespace vl1::themegen {

/// A colour cast added in OKLab a/b, of `chroma` towards `hue`.
struct tint {
    double hue = 0.0;
    double chroma = 0.0;
};

/// Draws hues within about `width` degrees of `hue` towards it, by `strength` (0..1) of
/// their distance.
struct hue_pull {
    double hue = 0.0;
    double strength = 0.0;
    double width = 60.0;
};

struct look_params {
    /// Gamma on lightness: above 1 lifts the mid-tones, black and white stay.
    double brightness = 1.0;
    /// Exponent of an S-curve around `pivot`: above 1 more contrast with a soft toe and
    /// shoulder, below 1 flatter; black, white and the pivot stay.
    double contrast = 1.0;
    /// Lightness that contrast turns around; 0.5646 is that of 18 % grey.
    double pivot = 0.5646;
    /// Lightness that black is raised to, and that white is lowered by: the film-like fade
    /// that keeps the ends of the range from clipping.
    double black_lift = 0.0;
    double white_rolloff = 0.0;
    /// Factor on chroma; greys stay grey whatever it is.
    double saturation = 1.0;
    /// Casts weighted towards the dark and the light end. Both fade out at pure black and
    /// pure white, so the ends of the grey axis keep their neutrality.
    tint shadows;
    tint highlights;
    std::vector<hue_pull> hue_pulls;
    /// 0..1: how far colours in the skin band are kept from the look's hue and chroma
    /// changes and casts (tone still applies to them).
    double skin_protection = 0.8;
};

/// One LUT of a theme: its file name in the theme folder, its angle on the wheel, and how
/// it grades.
struct look_definition {
    std::string name;
    std::string file;
    float rotation = 0.0f;
    look_params params;
};

}  // namespace vl1::themegen
