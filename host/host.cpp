#include "host/host.h"

#include "host/image_effect_suite.h"
#include "host/memory_suite.h"
#include "host/message_suite.h"
#include "host/param_suite.h"
#include "host/property_suite.h"
#include "host/thread_suite.h"

#include <cstring>

namespace vl1::ofxhost {

namespace {

const void* suite_named(const char* name)
{
    const std::pair<const char*, const void*> suites[] = {
        {kOfxImageEffectSuite, image_effect_suite()}, {kOfxPropertySuite, property_suite()},
        {kOfxParameterSuite, parameter_suite()},      {kOfxMemorySuite, memory_suite()},
        {kOfxMultiThreadSuite, thread_suite()},       {kOfxMessageSuite, message_suite()},
        {kOfxInteractSuite, interact_suite()},
    };
    for (const auto& [n, s] : suites) {
        if (std::strcmp(n, name) == 0)
            return s;
    }
    return nullptr;
}

const void* fetch(OfxPropertySetHandle, const char* name, int version)
{
    try {
        if (name == nullptr || version != 1)
            return nullptr;
        if (current_state().failures.suite_omitted(name))
            return nullptr;
        return suite_named(name);
    } catch (...) {
        return nullptr;
    }
}

void describe_host(property_set& p)
{
    p.define_string(kOfxPropType, {kOfxTypeImageEffectHost});
    p.define_string(kOfxPropName, {"org.hueloom.host"});
    p.define_string(kOfxPropLabel, {"Hueloom host"});
    p.define_int(kOfxPropAPIVersion, {1, 4});
    p.define_int(kOfxPropVersion, {1, 0, 0});
    p.define_string(kOfxPropVersionLabel, {"1.0"});
    p.define_int(kOfxImageEffectHostPropIsBackground, {0});
    p.define_int(kOfxImageEffectPropSupportsOverlays, {0});
    p.define_int(kOfxImageEffectPropSupportsMultiResolution, {1});
    p.define_int(kOfxImageEffectPropSupportsTiles, {1});
    p.define_int(kOfxImageEffectPropTemporalClipAccess, {0});
    p.define_string(kOfxImageEffectPropSupportedComponents, {kOfxImageComponentRGBA});
    p.define_string(kOfxImageEffectPropSupportedContexts,
                    {kOfxImageEffectContextFilter, kOfxImageEffectContextGeneral, kOfxImageEffectContextGenerator});
    p.define_string(kOfxImageEffectPropSupportedPixelDepths, {kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat});
    p.define_int(kOfxImageEffectPropSupportsMultipleClipDepths, {1});
    p.define_int(kOfxImageEffectPropSupportsMultipleClipPARs, {0});
    p.define_int("OfxImageEffectPropSetableFrameRate", {0});
    p.define_int("OfxImageEffectPropSetableFielding", {0});
    p.define_int(kOfxParamHostPropSupportsCustomInteract, {0});
    p.define_int(kOfxParamHostPropSupportsStringAnimation, {1});
    p.define_int(kOfxParamHostPropSupportsChoiceAnimation, {1});
    p.define_int(kOfxParamHostPropSupportsBooleanAnimation, {1});
    p.define_int(kOfxParamHostPropSupportsCustomAnimation, {1});
    p.define_int(kOfxParamHostPropMaxParameters, {-1});
    p.define_int(kOfxParamHostPropMaxPages, {0});
    p.define_int("OfxParamHostPropPageRowColumnCount", {0, 0});
    p.define_pointer(kOfxPropHostOSHandle, nullptr);
}

}  // namespace

host::host()
{
    describe_host(props);
    ofx_host_struct.host = props.handle();
    ofx_host_struct.fetchSuite = fetch;
    push_state(&shared_state);
}

host::~host() { pop_state(&shared_state); }

const void* host::fetch_suite(const char* name, int version) const
{
    return ofx_host_struct.fetchSuite(ofx_host_struct.host, name, version);
}

int host::plugin_count(const std::filesystem::path& bundle) { return library::open(bundle)->plugin_count(); }

plugin host::load_plugin(const std::filesystem::path& bundle, int index)
{
    auto lib = library::open(bundle);
    OfxPlugin* record = lib->plugin(index);
    record->setHost(&ofx_host_struct);
    return plugin(std::move(lib), record, index);
}

}  // namespace vl1::ofxhost
