// Shared pieces of the effect's tests: a component with a plain host object, and small
// procedural themes whose looks are easy to tell apart.
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "color/hueloom_theme_v1.h"
#include "effect/hueloom.h"
#include "framework/chost.h"
#include "themes/hueloom_vault.h"

namespace vl1::effect_test {

/// A LUT that shifts every entry of the identity by (dr, dg, db), clamped to 0..1.
inline std::shared_ptr<const lut_argb<32>> shifted_lut(float dr, float dg, float db)
{
    auto lut = std::make_shared<lut_argb<32>>();
    for (auto& e : lut->data)
        e = {e.a, std::clamp(e.r + dr, 0.0f, 1.0f), std::clamp(e.g + dg, 0.0f, 1.0f), std::clamp(e.b + db, 0.0f, 1.0f)};
    return lut;
}

/// A theme of uid `uid` with four wheel LUTs at 0, 90, 180 and 270 degrees and, if asked,
/// a post-processing LUT.
inline std::shared_ptr<hueloom_theme_v1> make_theme(uint32_t uid, const std::string& name, bool post_processing = false)
{
    auto theme = std::make_shared<hueloom_theme_v1>();
    theme->uid = uid;
    theme->name = name;
    theme->version = 1;
    theme->luts = {{shifted_lut(0.1f, 0.0f, -0.1f), 0.0f},
                   {shifted_lut(0.0f, 0.1f, 0.0f), 90.0f},
                   {shifted_lut(-0.1f, 0.0f, 0.1f), 180.0f},
                   {shifted_lut(0.05f, -0.05f, 0.05f), 270.0f}};
    if (post_processing)
        theme->post_processing_lut = shifted_lut(0.0f, 0.0f, 0.02f);
    theme->background_data = {0x89, 'P', 'N', 'G'};
    return theme;
}

/// `theme` after it joined the collection that every component of the process chooses from.
inline std::shared_ptr<const hueloom_theme_v1> add_to_collection(std::shared_ptr<const hueloom_theme_v1> theme)
{
    hueloom::get_vault()->get_theme_collection()->add_or_replace_theme(theme);
    return theme;
}

/// A new component behind a shared reference, initialised with a chost_v1.
inline std::shared_ptr<hueloom> make_component()
{
    auto fx = std::make_shared<hueloom>();
    fx->initialize(std::make_shared<chost_v1>(fx));
    return fx;
}

/// A new component whose current theme is `theme`, after it joined the collection.
inline std::shared_ptr<hueloom> make_component(std::shared_ptr<const hueloom_theme_v1> theme)
{
    auto fx = make_component();
    fx->set_current_theme_by_uuid(add_to_collection(std::move(theme))->uid);
    return fx;
}

/// Sets the continuous parameter `name` as the host would.
inline void set_param(hueloom& fx, const std::string& name, float value)
{
    auto p = std::dynamic_pointer_cast<cparameter_continuous_v1>(fx.get_parameter(name));
    if (!p)
        throw std::runtime_error("no continuous parameter " + name);
    p->set_value(value, true);
}

/// The value of the continuous parameter `name`.
inline float param_of(hueloom& fx, const char* name)
{
    return fx.get_parameter(std::string(name))->get_param_value().value.f;
}

/// The component's table after a render setup, read through the lut_exporter interface.
inline lut_argb_variable table_after_setup(hueloom& fx)
{
    fx.notify(event(event_render_setup));
    lut_argb_variable table;
    fx.get_lut(&table);
    return table;
}

/// The same entries, bit for bit.
inline bool same_bits(const std::vector<argb_float>& a, const std::vector<argb_float>& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(argb_float)) == 0;
}

}  // namespace vl1::effect_test
