#include "ofx/ofx_actions.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include "framework/component_factory.h"
#include "framework/log.h"
#include "ofx/ofx_host_interface.h"
#include "ofx/ofx_param_bridge.h"
#include "ofx/ofx_param_names.h"
#include "ofx/ofx_plugin_state.h"
#include "ofx/ofx_state_bridge.h"

namespace vl1 {

namespace {

/// Runs one step of the instance creation; a failure is logged and the creation goes on, so
/// that an instance exists even when, say, its saved state could not be read.
template <typename Step>
void guarded_step(const char* failure_text, Step&& step)
{
    try {
        step();
    } catch (...) {
        log_text(failure_text);
    }
}

template <typename Suite>
const Suite* fetch(OfxHost* host, const char* name)
{
    return static_cast<const Suite*>(host->fetchSuite(host->host, name, 1));
}

/// Counts the hidden request parameter up, so that the host renders the current frame and
/// the editor opens inside that render.
void request_render(const host_suites& s, OfxImageEffectHandle effect)
{
    OfxParamSetHandle param_set = nullptr;
    OfxParamHandle handle = nullptr;
    if (s.effect->getParamSet(effect, &param_set) != kOfxStatOK ||
        s.parameter->paramGetHandle(param_set, editor_request_param_name, &handle, nullptr) != kOfxStatOK)
        return;
    int count = 0;
    s.parameter->paramGetValue(handle, &count);
    s.parameter->paramSetValue(handle, count == std::numeric_limits<int>::max() ? 0 : count + 1);
}

}  // namespace

OfxStatus action_load()
{
    auto& state = ofx_plugin_state::get();
    if (state.host == nullptr || state.host->fetchSuite == nullptr)
        return kOfxStatErrMissingHostFeature;
    host_suites& s = state.suites;
    s.effect = fetch<OfxImageEffectSuiteV1>(state.host, kOfxImageEffectSuite);
    s.property = fetch<OfxPropertySuiteV1>(state.host, kOfxPropertySuite);
    s.parameter = fetch<OfxParameterSuiteV1>(state.host, kOfxParameterSuite);
    s.memory = fetch<OfxMemorySuiteV1>(state.host, kOfxMemorySuite);
    s.multi_thread = fetch<OfxMultiThreadSuiteV1>(state.host, kOfxMultiThreadSuite);
    s.message = fetch<OfxMessageSuiteV1>(state.host, kOfxMessageSuite);
    s.interact = fetch<void>(state.host, kOfxInteractSuite);
    return s.has_required() ? kOfxStatOK : kOfxStatErrMissingHostFeature;
}

OfxStatus action_unload()
{
    auto& state = ofx_plugin_state::get();
    if (const size_t alive = state.instance_count(); alive != 0)
        log("OfxActionUnload with {0} instances still alive; they stay", alive);
    state.unload();
    return kOfxStatOK;
}

OfxStatus action_describe(OfxImageEffectHandle effect)
{
    auto& state = ofx_plugin_state::get();
    const std::shared_ptr<icomponent_v1> prototype = state.described_prototype();
    if (!prototype)
        return kOfxStatFailed;

    const host_suites& s = state.suites;
    OfxPropertySetHandle props = nullptr;
    s.effect->getPropertySet(effect, &props);
    const std::string label = prototype->get_name();
    const std::string grouping = prototype->get_vendor();
    // The render path reads and writes each image at its own depth.
    s.property->propSetInt(props, kOfxImageEffectPropSupportsMultipleClipDepths, 0, 1);
    s.property->propSetString(props, kOfxImageEffectPropSupportedPixelDepths, 0, kOfxBitDepthFloat);
    s.property->propSetString(props, kOfxPropLabel, 0, label.c_str());
    s.property->propSetString(props, kOfxImageEffectPluginPropGrouping, 0, grouping.c_str());
    s.property->propSetString(props, kOfxImageEffectPropSupportedContexts, 0, kOfxImageEffectContextFilter);
    return kOfxStatOK;
}

OfxStatus action_describe_in_context(OfxImageEffectHandle effect)
{
    auto& state = ofx_plugin_state::get();
    const host_suites& s = state.suites;
    for (const char* clip : {kOfxImageEffectOutputClipName, kOfxImageEffectSimpleSourceClipName}) {
        OfxPropertySetHandle props = nullptr;
        s.effect->clipDefine(effect, clip, &props);
        s.property->propSetString(props, kOfxImageEffectPropSupportedComponents, 0, kOfxImageComponentRGBA);
    }
    // A host that cached its Describe may come straight here after a reload.
    const std::shared_ptr<icomponent_v1> prototype = state.described_prototype();
    if (!prototype)
        return kOfxStatFailed;
    DefineParameters(s, effect, prototype);
    return kOfxStatOK;
}

OfxStatus action_create_instance(OfxImageEffectHandle effect)
{
    auto& state = ofx_plugin_state::get();
    const host_suites& s = state.suites;

    std::shared_ptr<icomponent_v1> component(create_ccomponent());
    auto host = std::make_shared<ofx_host_interface>(component);

    guarded_step("Exception in InitComponent", [&] { component->initialize(host); });
    guarded_step("Exception in SetStateVectorInComponent", [&] { LoadStateFromHost(s, effect, component); });
    guarded_step("Exception in SetAllParamsToComponent",
                 [&] { SetAllParamsToComponent(s, no_particular_time(), effect, component); });

    auto record = std::make_shared<ofx_instance_data>();
    ofx_instance_data* address = record.get();
    state.add_instance(std::move(record), std::move(component));
    // The record's address is the instance's key in the table and in the host's property.
    log("New component token is {0}", reinterpret_cast<std::uintptr_t>(address));

    OfxPropertySetHandle props = nullptr;
    if (s.effect->getPropertySet(effect, &props) == kOfxStatOK && props != nullptr)
        s.property->propSetPointer(props, kOfxPropInstanceData, 0, address);
    return kOfxStatOK;
}

OfxStatus action_instance_changed(OfxImageEffectHandle effect, OfxPropertySetHandle in_args)
{
    auto& state = ofx_plugin_state::get();
    const host_suites& s = state.suites;
    const instance_entry entry = state.find_entry(effect);

    char* name = nullptr;
    const OfxStatus status = s.property->propGetString(in_args, kOfxPropName, 0, &name);
    if (entry.record && entry.component)
        WritePendingToHost(s, effect, entry.component);
    if (name != nullptr && std::strcmp(name, open_gui_param_name) == 0 && entry.record) {
        log("Open GUI requested!");
        entry.record->open_gui = true;
        request_render(s, effect);
    }
    return status;
}

OfxStatus action_write_pending(OfxImageEffectHandle effect)
{
    auto& state = ofx_plugin_state::get();
    const instance_entry entry = state.find_entry(effect);
    if (entry.record && entry.component)
        WritePendingToHost(state.suites, effect, entry.component);
    return kOfxStatReplyDefault;
}

OfxStatus action_destroy_instance(OfxImageEffectHandle effect)
{
    ofx_plugin_state::get().remove_entry(effect);
    return kOfxStatOK;
}

}  // namespace vl1
