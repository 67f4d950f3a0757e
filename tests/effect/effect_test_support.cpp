#include "tests/effect/effect_test_support.h"

#include <algorithm>

#include "framework/chost.h"

namespace vl1::effect_test {

std::shared_ptr<const lut_argb<32>> shifted_lut(float dr, float dg, float db)
{
    auto lut = std::make_shared<lut_argb<32>>();
    for (auto& e : lut->data) {
        e.r = std::clamp(e.r + dr, 0.0f, 1.0f);
        e.g = std::clamp(e.g + dg, 0.0f, 1.0f);
        e.b = std::clamp(e.b + db, 0.0f, 1.0f);
    }
    return lut;
}

std::shared_ptr<hueloom_theme_v1> make_theme(uint32_t uid, const std::string& name, bool post_processing)
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

std::shared_ptr<hueloom> make_component()
{
    auto fx = std::make_shared<hueloom>();
    fx->initialize(std::make_shared<chost_v1>(fx));
    return fx;
}

void set_param(hueloom& fx, const std::string& name, float value)
{
    auto p = std::dynamic_pointer_cast<cparameter_continuous_v1>(fx.get_parameter(name));
    if (!p)
        throw std::runtime_error("no continuous parameter " + name);
    p->set_value(value, true);
}

lut_argb_variable table_after_setup(hueloom& fx)
{
    fx.notify(event(event_render_setup));
    lut_argb_variable table;
    fx.get_lut(&table);
    return table;
}

}  // namespace vl1::effect_test
