// How one look grades one colour: tone on OKLab lightness, then chroma, hue and casts, with
// skin tones and greys protected, and a soft gamut compression instead of a hard clip.
#pragma once

#include "tools/theme_generator/look_params.h"
#include "tools/theme_generator/oklab.h"

namespace vl1::themegen {

/// The tone curve on OKLab lightness 0..1: brightness, contrast S-curve, fade. Strictly
/// increasing for every valid look, and within black_lift..1 - white_rolloff.
double tone_curve(const look_params& look, double lightness);

/// 0..1: how much a colour of this chroma and hue counts as skin. Skin lies around hue 38 to
/// 58 with modest chroma; the weight falls off smoothly outside that band.
double skin_weight(double chroma, double hue);

/// The largest chroma that lightness `L` and `hue` can have inside the sRGB gamut.
double max_chroma_in_gamut(double L, double hue);

/// Brings chroma above 80 % of the gamut's reach softly towards 96 % of it, never further:
/// colours close to the edge are compressed instead of clipped, so their gradations stay.
double compress_chroma(double chroma, double max_chroma);

/// Grades a display-referred sRGB colour (channels 0..1) and gives the result in the same
/// terms, inside 0..1.
rgb_d grade_colour(const look_params& look, const rgb_d& encoded);

}  // namespace vl1::themegen
