// The bundle's two exported entry points, the plug-in record and the dispatcher with the one
// guard that turns every exception into an OFX status code.
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

#include "framework/component_factory.h"
#include "framework/log.h"
#include "ofx/ofx_actions.h"
#include "ofx/ofx_plugin_state.h"

namespace vl1 {
namespace {

OfxStatus dispatch(const char* action, const void* handle, OfxPropertySetHandle in_args, OfxPropertySetHandle out_args)
{
    auto effect = static_cast<OfxImageEffectHandle>(const_cast<void*>(handle));
    if (std::strcmp(action, kOfxActionLoad) == 0)
        return action_load();
    if (std::strcmp(action, kOfxActionUnload) == 0)
        return action_unload();

    using action_fn = OfxStatus (*)(OfxImageEffectHandle, OfxPropertySetHandle);
    static const struct {
        const char* name;
        action_fn run;
    } table[] = {
        {kOfxActionDescribe, [](OfxImageEffectHandle e, OfxPropertySetHandle) { return action_describe(e); }},
        {kOfxActionCreateInstance, [](OfxImageEffectHandle e, OfxPropertySetHandle) { return action_create_instance(e); }},
        {kOfxImageEffectActionDescribeInContext,
         [](OfxImageEffectHandle e, OfxPropertySetHandle) { return action_describe_in_context(e); }},
        {kOfxImageEffectActionRender, action_render},
        {kOfxImageEffectActionIsIdentity, nullptr},  // the one action that answers in out_args
        {kOfxActionInstanceChanged, action_instance_changed},
        {kOfxActionSyncPrivateData, [](OfxImageEffectHandle e, OfxPropertySetHandle) { return action_write_pending(e); }},
        {kOfxActionBeginInstanceChanged,
         [](OfxImageEffectHandle e, OfxPropertySetHandle) { return action_write_pending(e); }},
        {kOfxActionEndInstanceChanged, [](OfxImageEffectHandle e, OfxPropertySetHandle) { return action_write_pending(e); }},
        {kOfxActionDestroyInstance, [](OfxImageEffectHandle e, OfxPropertySetHandle) { return action_destroy_instance(e); }},
    };
    for (const auto& entry : table) {
        if (std::strcmp(action, entry.name) != 0)
            continue;
        // A host that skipped "OfxActionLoad", or lacked a suite there, gets an answer rather
        // than a call through a null suite.
        if (!ofx_plugin_state::get().suites.has_required()) {
            log("OFX action {0} before the host's suites were fetched", action);
            return kOfxStatErrMissingHostFeature;
        }
        if (effect == nullptr) {
            log("OFX action {0} without an effect handle", action);
            return kOfxStatErrBadHandle;
        }
        return entry.run ? entry.run(effect, in_args) : action_is_identity(effect, in_args, out_args);
    }
    return kOfxStatReplyDefault;
}

OfxStatus main_entry(const char* action, const void* handle, OfxPropertySetHandle in_args,
                     OfxPropertySetHandle out_args)
{
    try {
        if (action == nullptr) {
            log_text("OFX action received without a name");
            return kOfxStatErrBadHandle;
        }
        log("OFX action received: {0}", action);
        return dispatch(action, handle, in_args, out_args);
    } catch (const std::bad_alloc&) {
        log_text("OFX Plugin Memory error.");
        return kOfxStatErrMemory;
    } catch (const std::exception& e) {
        log("OFX Plugin error: {0}", e.what());
        return kOfxStatErrUnknown;
    } catch (int code) {
        log("OFX Plugin error code: {0}", code);
        return code;
    } catch (...) {
        log_text("OFX Plugin error (unknown)");
        return kOfxStatErrUnknown;
    }
}

void set_host(OfxHost* host)
{
    ofx_plugin_state::get().host = host;
}

/// The identifier the plug-in record points at, filled once from the prototype.
std::string& identifier_text()
{
    static auto* text = new std::string;
    return *text;
}

OfxPlugin plugin_record = {
    kOfxImageEffectPluginApi, kOfxImageEffectPluginApiVersion, "", 0, 0, set_host, main_entry,
};

OfxPlugin* get_plugin(int index)
{
    auto& state = ofx_plugin_state::get();
    if (!state.prototype) {
        state.prototype.reset(create_ccomponent());
        log("Wrapper version is {0}", wrapper_version);
    }
    if (identifier_text().empty())
        identifier_text() = state.prototype->get_com_identifier();
    plugin_record.pluginIdentifier = identifier_text().c_str();
    const version_record version = state.prototype->get_version();
    plugin_record.pluginVersionMajor = version.major_version;
    plugin_record.pluginVersionMinor = version.minor_version;
    log("Register plugin: {0}", identifier_text());
    return index == 0 ? &plugin_record : nullptr;
}

}  // namespace
}  // namespace vl1

extern "C" {

__attribute__((visibility("default"))) int OfxGetNumberOfPlugins(void)
{
    return 1;
}

__attribute__((visibility("default"))) OfxPlugin* OfxGetPlugin(int nth)
{
    // Nothing may escape into a C host; without a prototype there is nothing to offer.
    try {
        return vl1::get_plugin(nth);
    } catch (...) {
        vl1::log_text("OFX Plugin error: the plug-in could not be created");
        return nullptr;
    }
}

}  // extern "C"
