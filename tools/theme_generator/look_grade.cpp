#include "tools/theme_generator/look_grade.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vl1::themegen {

namespace {

double smoothstep(double edge0, double edge1, double x)
{
    const double t = std::clamp((x - edge0) / (edge1 - edge0), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

// The skin band, in OKLab hue degrees and chroma: measured skin from pale to deep lies at
// hue 38..58 with chroma 0.03..0.11. The weight is full within `skin_hue_core` of the
// centre and gone beyond `skin_hue_edge`.
constexpr double skin_hue_centre = 48.0;
constexpr double skin_hue_core = 14.0;
constexpr double skin_hue_edge = 30.0;

// Below this chroma a hue is too ill-defined to pull: greys and near-greys keep theirs.
constexpr double hue_defined_from = 0.005;
constexpr double hue_defined_fully = 0.04;

// Compression starts at this share of the gamut's reach and approaches, never reaches, the
// ceiling share: a margin from the edge keeps every channel of a graded colour off 0 and 1.
constexpr double chroma_knee = 0.8;
constexpr double chroma_ceiling = 0.96;

double contrast_curve(double x, double contrast, double pivot)
{
    if (x < pivot)
        return pivot * std::pow(x / pivot, contrast);
    return 1.0 - (1.0 - pivot) * std::pow((1.0 - x) / (1.0 - pivot), contrast);
}

// Casts weigh most in the dark and the light range, and fade out towards pure black and
// pure white so those stay neutral.
double shadow_weight(double L)
{
    return (1.0 - L) * (1.0 - L) * smoothstep(0.0, 0.2, L);
}

double highlight_weight(double L)
{
    return L * L * (1.0 - smoothstep(0.85, 1.0, L));
}

double hue_pull_offset(const look_params& look, double hue)
{
    double offset = 0.0;
    for (const hue_pull& pull : look.hue_pulls) {
        const double d = hue_difference(hue, pull.hue);
        const double reach = d / pull.width;
        offset += pull.strength * d * std::exp(-reach * reach);
    }
    return offset;
}

void add_tint(oklab_d& lab, const tint& cast, double weight)
{
    const double radians = cast.hue * std::numbers::pi / 180.0;
    lab.a += weight * cast.chroma * std::cos(radians);
    lab.b += weight * cast.chroma * std::sin(radians);
}

}  // namespace

double tone_curve(const look_params& look, double lightness)
{
    double x = std::clamp(lightness, 0.0, 1.0);
    x = std::pow(x, 1.0 / look.brightness);
    x = contrast_curve(x, look.contrast, look.pivot);
    return look.black_lift + x * (1.0 - look.black_lift - look.white_rolloff);
}

double skin_weight(double chroma, double hue)
{
    const double distance = std::fabs(hue_difference(skin_hue_centre, hue));
    const double in_hue = 1.0 - smoothstep(skin_hue_core, skin_hue_edge, distance);
    const double in_chroma = smoothstep(0.01, 0.03, chroma) * (1.0 - smoothstep(0.13, 0.19, chroma));
    return in_hue * in_chroma;
}

double max_chroma_in_gamut(double L, double hue)
{
    if (L <= 0.0 || L >= 1.0)
        return 0.0;
    double inside = 0.0;
    double outside = 0.5;  // beyond any sRGB colour
    for (int step = 0; step < 40; ++step) {
        const double middle = 0.5 * (inside + outside);
        if (in_unit_gamut(oklab_to_linear_srgb(to_lab({L, middle, hue}))))
            inside = middle;
        else
            outside = middle;
    }
    return inside;
}

double compress_chroma(double chroma, double max_chroma)
{
    const double knee = chroma_knee * max_chroma;
    if (chroma <= knee)
        return chroma;
    const double room = (chroma_ceiling - chroma_knee) * max_chroma;
    if (room <= 0.0)
        return 0.0;
    return knee + room * std::tanh((chroma - knee) / room);
}

rgb_d grade_colour(const look_params& look, const rgb_d& encoded)
{
    const rgb_d linear{srgb_to_linear(encoded.r), srgb_to_linear(encoded.g), srgb_to_linear(encoded.b)};
    const oklch_d source = to_lch(linear_srgb_to_oklab(linear));

    // What the look may change of a colour's hue and chroma: all of it, less the skin share.
    const double keep = 1.0 - look.skin_protection * skin_weight(source.C, source.h);
    const double saturation = 1.0 + (look.saturation - 1.0) * keep;
    const double hue_defined = smoothstep(hue_defined_from, hue_defined_fully, source.C);

    oklch_d graded;
    graded.L = tone_curve(look, source.L);
    graded.C = source.C * saturation;
    graded.h = source.h + hue_pull_offset(look, source.h) * hue_defined * keep;

    oklab_d lab = to_lab(graded);
    add_tint(lab, look.shadows, shadow_weight(source.L) * keep);
    add_tint(lab, look.highlights, highlight_weight(source.L) * keep);

    oklch_d result = to_lch(lab);
    result.C = compress_chroma(result.C, max_chroma_in_gamut(result.L, result.h));
    const rgb_d out = oklab_to_linear_srgb(to_lab(result));
    return {std::clamp(linear_to_srgb(out.r), 0.0, 1.0), std::clamp(linear_to_srgb(out.g), 0.0, 1.0),
            std::clamp(linear_to_srgb(out.b), 0.0, 1.0)};
}

}  // namespace vl1::themegen
