#include "ofx/ofx_state_bridge.h"

#include <string>
#include <vector>

#include "framework/istate_layout.h"
#include "framework/log.h"
#include "framework/io/state_text.h"
#include "ofx/ofx_host_interface.h"
#include "ofx/ofx_param_bridge.h"
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

bool SaveStateToHost(const host_suites& suites, OfxImageEffectHandle effect,
                     const std::shared_ptr<icomponent_v1>& component)
{
    auto host = std::dynamic_pointer_cast<ofx_host_interface>(component->get_host());
    OfxParamSetHandle param_set = nullptr;
    OfxParamHandle handle = nullptr;
    bool written = suites.effect->getParamSet(effect, &param_set) == kOfxStatOK &&
                   suites.parameter->paramGetHandle(param_set, state_param_name, &handle, nullptr) == kOfxStatOK;
    if (written) {
        const std::vector<uint8_t> blob = component->get_state();
        std::vector<state_float_grid> grids;
        iobject* face = nullptr;
        if (component->query_interface("istate_layout_v1", &face) && face != nullptr)
            grids = static_cast<istate_layout_v1*>(face)->float_grids(blob);
        const std::string text = encode_state_text(blob, grids);
        written = suites.parameter->paramSetValue(handle, text.c_str()) == kOfxStatOK;
    }
    if (!written)
        log_text("The host refused the state; it is written at its next action.");
    if (host)
        host->set_state_pending(!written);
    return written;
}

void WritePendingToHost(const host_suites& suites, OfxImageEffectHandle effect,
                        const std::shared_ptr<icomponent_v1>& component)
{
    PushDirtyParamsToHost(suites, no_particular_time(), effect, component);
    auto host = std::dynamic_pointer_cast<ofx_host_interface>(component->get_host());
    if (host && host->is_state_pending())
        SaveStateToHost(suites, effect, component);
}

}  // namespace vl1
