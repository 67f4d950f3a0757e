// A small effect for the preset tests: four parameters of every type, a state that carries
// the name of a "theme" behind the base blob, a refusal of states whose theme isn't
// available, and optionally an exportable table.
#pragma once

#include <atomic>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "framework/ccomponent.h"
#include "framework/chost.h"
#include "framework/cparameter.h"
#include "framework/lut_exporter.h"
#include "tests/support/test_files.h"

namespace vl1::presettest {

class themed_component : public ccomponent_v1, public lut_exporter {
public:
    themed_component(std::string component_name, bool exports_lut)
        : name(std::move(component_name)), exports(exports_lut)
    {
    }

    std::string get_name() override { return name; }

    bool query_interface(const std::string& id, iobject** out) override
    {
        if (exports && uid(id) == lut_exporter::ifc_id) {
            if (out != nullptr)
                *out = static_cast<lut_exporter*>(this);
            return true;
        }
        return ccomponent_v1::query_interface(id, out);
    }

    void init_component() override
    {
        auto self = shared_from_this();
        gain = add_parameter(std::make_shared<cparameter_continuous_v1>(self, "Gain", 0.0f, 10.0f, 1.0f));
        steps = add_parameter(std::make_shared<cparameter_integral_v1>(self, "Steps", -5, 5, 0));
        invert = add_parameter(std::make_shared<cparameter_boolean_v1>(self, "Invert", false));
        tint = add_parameter(std::make_shared<cparameter_color_v1>(self, "Tint", param_argb{1.0f, 0.5f, 0.25f, 0.0f}));
    }

    // Base blob, then one length byte and the theme name.
    std::vector<uint8_t> get_state() override
    {
        auto blob = ccomponent_v1::get_state();
        blob.push_back(static_cast<uint8_t>(theme.size()));
        blob.insert(blob.end(), theme.begin(), theme.end());
        return blob;
    }

    bool set_state(std::vector<uint8_t>& state, bool from_host) override
    {
        const bool ok = ccomponent_v1::set_state(state, from_host);
        std::string saved;
        if (ok && theme_in(state, saved))
            theme = saved;
        return ok;
    }

    bool is_state_rejected(std::vector<uint8_t>& state, bool, std::string& reason) override
    {
        reason.clear();
        std::string saved;
        if (!theme_in(state, saved) || saved.empty() || available_themes.count(saved) != 0)
            return false;
        reason = "Saved data contains theme \"" + saved + "\", which is not available.";
        return true;
    }

    // A table of edge 2 whose cells tell their own index: r = i, g = i + 0.5, b = -i.
    bool get_lut(lut_argb_variable* lut) override
    {
        if (lut == nullptr)
            return false;
        lut->edge = 2;
        lut->data.assign(8, argb_float{});
        for (std::size_t i = 0; i < 8; ++i) {
            const auto f = static_cast<float>(i);
            lut->data[i] = argb_float{1.0f, f, f + 0.5f, -f};
        }
        lut->text.clear();
        return true;
    }

    std::string name;
    bool exports;
    std::string theme;
    std::set<std::string> available_themes;
    std::shared_ptr<cparameter_continuous_v1> gain;
    std::shared_ptr<cparameter_integral_v1> steps;
    std::shared_ptr<cparameter_boolean_v1> invert;
    std::shared_ptr<cparameter_color_v1> tint;

private:
    bool theme_in(const std::vector<uint8_t>& state, std::string& out)
    {
        const std::size_t at = ccomponent_v1::get_state_size();
        if (state.size() <= at || state.size() != at + 1 + state[at])
            return false;
        out.assign(state.begin() + static_cast<std::ptrdiff_t>(at) + 1, state.end());
        return true;
    }
};

struct rig {
    std::shared_ptr<themed_component> component;
    std::shared_ptr<chost_v1> host;
};

/// An initialised component with a name of its own, so that every test has its own folder.
inline rig make_rig(bool exports_lut = false)
{
    static std::atomic<int> counter{0};
    rig r;
    r.component = std::make_shared<themed_component>("PresetTest" + std::to_string(counter++), exports_lut);
    r.host = std::make_shared<chost_v1>(r.component);
    r.component->initialize(r.host);
    return r;
}

}  // namespace vl1::presettest
