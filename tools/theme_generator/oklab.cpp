#include "tools/theme_generator/oklab.h"

#include <cmath>
#include <numbers>

namespace vl1::themegen {

double srgb_to_linear(double encoded)
{
    const double magnitude = std::fabs(encoded);
    const double linear = magnitude <= 0.04045 ? magnitude / 12.92 : std::pow((magnitude + 0.055) / 1.055, 2.4);
    return std::copysign(linear, encoded);
}

double linear_to_srgb(double linear)
{
    const double magnitude = std::fabs(linear);
    const double encoded = magnitude <= 0.0031308 ? magnitude * 12.92 : 1.055 * std::pow(magnitude, 1.0 / 2.4) - 0.055;
    return std::copysign(encoded, linear);
}

// The matrices are those that define OKLab: linear sRGB to an LMS cone response, a cube
// root, and LMS' to Lab.
oklab_d linear_srgb_to_oklab(const rgb_d& c)
{
    const double l = std::cbrt(0.4122214708 * c.r + 0.5363325363 * c.g + 0.0514459929 * c.b);
    const double m = std::cbrt(0.2119034982 * c.r + 0.6806995451 * c.g + 0.1073969566 * c.b);
    const double s = std::cbrt(0.0883024619 * c.r + 0.2817188376 * c.g + 0.6299787005 * c.b);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

rgb_d oklab_to_linear_srgb(const oklab_d& lab)
{
    const double l_root = lab.L + 0.3963377774 * lab.a + 0.2158037573 * lab.b;
    const double m_root = lab.L - 0.1055613458 * lab.a - 0.0638541728 * lab.b;
    const double s_root = lab.L - 0.0894841775 * lab.a - 1.2914855480 * lab.b;
    const double l = l_root * l_root * l_root;
    const double m = m_root * m_root * m_root;
    const double s = s_root * s_root * s_root;
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

oklch_d to_lch(const oklab_d& lab)
{
    double hue = std::atan2(lab.b, lab.a) * 180.0 / std::numbers::pi;
    if (hue < 0.0)
        hue += 360.0;
    return {lab.L, std::hypot(lab.a, lab.b), hue};
}

oklab_d to_lab(const oklch_d& lch)
{
    const double radians = lch.h * std::numbers::pi / 180.0;
    return {lch.L, lch.C * std::cos(radians), lch.C * std::sin(radians)};
}

double hue_difference(double from, double to)
{
    double d = std::fmod(to - from, 360.0);
    if (d > 180.0)
        d -= 360.0;
    else if (d < -180.0)
        d += 360.0;
    return d;
}

bool in_unit_gamut(const rgb_d& c, double tolerance)
{
    const double low = -tolerance;
    const double high = 1.0 + tolerance;
    return c.r >= low && c.r <= high && c.g >= low && c.g <= high && c.b >= low && c.b <= high;
}

}  // namespace vl1::themegen
