// The perceptual colour space in which the looks are graded: sRGB display values are
// linearised and taken to OKLab, a space whose lightness follows perceived brightness and
// whose hue angle stays put when chroma changes, so that a tint or a saturation change
// doesn't drift hues the way it would in RGB or HSL.
//
// Everything here is double precision: it runs once per grid point when a theme is made,
// never per pixel in the plug-in.
#pragma once

namespace vl1::themegen {

struct rgb_d {
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
};

/// OKLab: L is lightness, 0 (black) to 1 (white of linear sRGB); a and b span the opponent
/// axes, green-red and blue-yellow, with chroma up to about 0.32 inside the sRGB gamut.
struct oklab_d {
    double L = 0.0;
    double a = 0.0;
    double b = 0.0;
};

/// OKLab in polar form: chroma and hue angle in degrees, 0 <= hue < 360.
struct oklch_d {
    double L = 0.0;
    double C = 0.0;
    double h = 0.0;
};

/// The sRGB transfer function (IEC 61966-2-1): display value 0..1 to linear light and back.
/// Values outside 0..1 are extended by mirroring through 0, so the functions stay monotonic.
double srgb_to_linear(double encoded);
double linear_to_srgb(double linear);

oklab_d linear_srgb_to_oklab(const rgb_d& linear);
rgb_d oklab_to_linear_srgb(const oklab_d& lab);

oklch_d to_lch(const oklab_d& lab);
oklab_d to_lab(const oklch_d& lch);

/// Signed difference `to` - `from` of two hue angles, taken the short way round: -180..180.
double hue_difference(double from, double to);

/// True when each channel of a linear colour lies in 0..1, give or take `tolerance`.
bool in_unit_gamut(const rgb_d& linear, double tolerance = 0.0);

}  // namespace vl1::themegen
