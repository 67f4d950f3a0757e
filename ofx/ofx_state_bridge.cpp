#include "ofx/ofx_state_bridge.h"

#include <sodium.h>

#include <cstring>
#include <string>
#include <vector>

#include "framework/log.h"
#include "ofx/ofx_host_interface.h"
#include "ofx/ofx_param_bridge.h"
#include "ofx/ofx_param_names.h"

namespace vl1 {

std::vector<uint8_t> decode_state_text(const char* text)
{
    if (text == nullptr)
        return {};
    const size_t length = std::strlen(text);
    std::vector<uint8_t> blob((length / 4) * 3, 0);
    if (blob.empty())
        return {};
    size_t decoded = 0;
    if (sodium_base642bin(blob.data(), blob.size(), text, length, nullptr, &decoded, nullptr,
                          sodium_base64_VARIANT_ORIGINAL) != 0 || decoded == 0)
        return {};
    return blob;
}

std::string encode_state_text(const std::vector<uint8_t>& blob)
{
    const size_t length = sodium_base64_encoded_len(blob.size(), sodium_base64_VARIANT_ORIGINAL);
    std::string text(length, '\0');  // length counts the terminator
    sodium_bin2base64(text.data(), length, blob.data(), blob.size(), sodium_base64_VARIANT_ORIGINAL);
    text.resize(std::strlen(text.c_str()));
    return text;
}

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
    std::vector<uint8_t> blob = decode_state_text(text);
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
        const std::string text = encode_state_text(component->get_state());
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
