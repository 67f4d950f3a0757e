#include "bench/bench_scene.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

#include "color/lut_sampling.h"
#include "framework/chost.h"
#include "themes/hueloom_theme_collection_v1.h"
#include "themes/hueloom_vault.h"

namespace vl1::bench {

namespace {

float unit(double v) { return static_cast<float>(std::clamp(v, 0.0, 1.0)); }

// A table of edge 32 from a colour function on 0..1, each channel clamped to 0..1.
using colour_function = std::function<void(double r, double g, double b, double out[3])>;

std::shared_ptr<const lut_argb<32>> make_table(const colour_function& f)
{
    auto table = std::make_shared<lut_argb<32>>();
    std::size_t i = 0;
    for (int r = 0; r < 32; ++r)
        for (int g = 0; g < 32; ++g)
            for (int b = 0; b < 32; ++b) {
                double out[3];
                f(r / 31.0, g / 31.0, b / 31.0, out);
                table->data[i++] = argb_float{1.0f, unit(out[0]), unit(out[1]), unit(out[2])};
            }
    return table;
}

double smooth_contrast(double x, double amount)
{
    const double s = x * x * (3.0 - 2.0 * x);
    return x + (s - x) * amount;
}

}  // namespace

effect_setting bench_setting()
{
    return effect_setting{260.0f, 85.0f, 130.0f, 80.0f, 115.0f};
}

std::shared_ptr<const hueloom_theme_v1> make_bench_theme()
{
    auto theme = std::make_shared<hueloom_theme_v1>();
    theme->name = "Benchmark";
    theme->uid = 0xbe0c0001u;
    // Warm split-tone: lifted, orange highlights and teal shadows.
    const auto warm = make_table([](double r, double g, double b, double out[3]) {
        const double luma = 0.2126 * r + 0.7152 * g + 0.0722 * b;
        out[0] = std::pow(r, 0.85) + 0.08 * luma;
        out[1] = g + 0.03 * (luma - 0.5);
        out[2] = b * 0.82 + 0.1 * (1.0 - luma);
    });
    // Cool mix: each channel borrows from the others, with a soft shoulder.
    const auto cool = make_table([](double r, double g, double b, double out[3]) {
        out[0] = 0.8 * r + 0.15 * g + 0.05 * b;
        out[1] = 0.1 * r + 0.8 * g + 0.1 * b;
        out[2] = 1.0 - std::pow(1.0 - (0.05 * r + 0.2 * g + 0.85 * b), 1.3);
    });
    theme->luts = {theme_lut_slot{warm, 40.0f}, theme_lut_slot{cool, 220.0f}};
    theme->post_processing_lut = make_table([](double r, double g, double b, double out[3]) {
        out[0] = smooth_contrast(r, 0.35);
        out[1] = smooth_contrast(g, 0.3);
        out[2] = smooth_contrast(b, 0.25);
    });
    return theme;
}

namespace {

void set_parameter(hueloom& effect, const char* name, float value)
{
    auto parameter = std::dynamic_pointer_cast<cparameter_continuous_v1>(effect.get_parameter(std::string(name)));
    if (!parameter)
        throw std::runtime_error(std::string("the effect has no continuous parameter ") + name);
    parameter->set_value(value, true);
}

}  // namespace

std::shared_ptr<hueloom> make_bench_effect(std::shared_ptr<const hueloom_theme_v1> theme, const effect_setting& setting)
{
    const auto effect = std::make_shared<hueloom>();
    effect->initialize(std::make_shared<chost_v1>(effect));
    hueloom::get_vault()->get_theme_collection()->add_or_replace_theme(theme);
    effect->set_current_theme_by_uuid(theme->uid);
    if (effect->get_current_theme_uuid() != theme->uid)
        throw std::runtime_error("the effect didn't take the benchmark theme");
    set_parameter(*effect, "Angle", setting.angle);
    set_parameter(*effect, "Strength", setting.strength);
    set_parameter(*effect, "Hue", setting.hue);
    set_parameter(*effect, "Chroma", setting.chroma);
    set_parameter(*effect, "Luminance", setting.luminance);
    return effect;
}

per_pixel_component::per_pixel_component(std::shared_ptr<const hueloom_theme_v1> theme, const effect_setting& setting)
    : theme(std::move(theme)), setting(setting)
{
}

void per_pixel_component::notify(event e)
{
    if (e.type != event_render_setup)
        return;
    fill_identity(result);
    theme->apply_theme(result, 360.0f - setting.angle, static_cast<float>(setting.strength / 100.0),
                       static_cast<float>(setting.hue / 100.0), static_cast<float>(setting.chroma / 100.0),
                       static_cast<float>(setting.luminance / 100.0));
}

void per_pixel_component::process_pixel(int, int, const argb_float& in, argb_float* out)
{
    *out = sample_lut(result, in);
}

}  // namespace vl1::bench
