#include "ofx/ofx_state_bridge.h"

#include <string>
#include <vector>

#include "framework/istate_layout.h"
#include "framework/state_text.h"
#include "ofx/ofx_param_names.h"

namespace vl1 {

void LoadStateFromHost(const host_suites& suites, OfxImageEffectHandle effect,
                       const std::shared_ptr<icomponent_v1>& component)
{
    OfxParamSetHandle param_set = nullptr;
    OfxParamHandle handle = nullptr;
    OfxPropertySetHandle props = nullptr;
    char* text = nullptr;
    if (suites.effect->getParamSet(effect, &param_set) != kOfxStatOK ||
        suites.parameter->paramGetHandle(param_set, state_param_name, &handle, nullptr) != kOfxStatOK ||
        suites.parameter->paramGetPropertySet(handle, &props) != kOfxStatOK ||
        suites.parameter->paramGetValue(handle, &text) != kOfxStatOK || text == nullptr)
        return;
    std::vector<uint8_t> blob = decode_state_text(text, component->get_state_size());
    if (!blob.empty())
        component->set_state(blob, true);
}

void SaveStateToHost(const host_suites& suites, OfxImageEffectHandle effect,
                     const std::shared_ptr<icomponent_v1>& component)
{
    OfxParamSetHandle param_set = nullptr;
    OfxParamHandle handle = nullptr;
    if (suites.effect->getParamSet(effect, &param_set) != kOfxStatOK ||
        suites.parameter->paramGetHandle(param_set, state_param_name, &handle, nullptr) != kOfxStatOK)
        return;
    const std::vector<uint8_t> blob = component->get_state();
    std::vector<state_float_grid> grids;
    iobject* face = nullptr;
    if (component->query_interface("istate_layout_v1", &face) && face != nullptr)
        grids = static_cast<istate_layout_v1*>(face)->float_grids(blob);
    const std::string text = encode_state_text(blob, grids);
    suites.parameter->paramSetValue(handle, text.c_str());
}

}  // namespace vl1
