// What hueloom-bench grades with: a theme made of procedural tables, the effect grading
// through it, and an independent per-pixel grader to check the effect against.
#pragma once

#include <memory>

#include "color/hueloom_theme_v1.h"
#include "color/lut_argb.h"
#include "effect/hueloom.h"
#include "framework/ccomponent.h"

namespace vl1::bench {

/// The measured render setup in the effect's own units: the wheel's "Angle" in degrees,
/// "Strength" in percent, "Hue", "Chroma" and "Luminance" in percent of neutral.
struct effect_setting {
    float angle = 0.0f;
    float strength = 0.0f;
    float hue = 100.0f;
    float chroma = 100.0f;
    float luminance = 100.0f;
};

/// Between the two slots of make_bench_theme, every refinement away from neutral, so that
/// each stage of the table's pipeline has work to do.
effect_setting bench_setting();

/// Two procedural wheel tables (a warm split-tone and a cool cross-channel mix) at 40 and
/// 220 degrees, and a contrast curve as post-processing.
std::shared_ptr<const hueloom_theme_v1> make_bench_theme();

/// The effect component (the class the adapter's factory makes), with `theme` added to the vault's
/// collection and chosen, and the parameters set as a host would. The vault works in the
/// user's folders under HOME: point HOME somewhere disposable first.
std::shared_ptr<hueloom> make_bench_effect(std::shared_ptr<const hueloom_theme_v1> theme, const effect_setting& setting);

/// An independent grader to check the effect against and to show what the row-wise face
/// is worth: it builds its table with the theme's apply_theme from the same setting (the
/// wheel angle runs against the theme's rotations, percentages are divided by 100) and is
/// rendered pixel by pixel, one sample_lut per process_pixel.
class per_pixel_component : public ccomponent_v1 {
public:
    per_pixel_component(std::shared_ptr<const hueloom_theme_v1> theme, const effect_setting& setting);

    void notify(event e) override;
    void process_pixel(int x, int y, const argb_float& in, argb_float* out) override;

private:
    std::shared_ptr<const hueloom_theme_v1> theme;
    effect_setting setting;
    lut_argb<32> result;
};

}  // namespace vl1::bench
