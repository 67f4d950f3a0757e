#include "host/description.h"

#include "ofx/api/ofx_image_effect.h"
#include "ofx/api/ofx_param.h"

#include <cfloat>
#include <climits>
#include <cstdio>

namespace vl1::ofxhost {

namespace {

std::string text_of(const property_set& p, const char* name)
{
    if (!p.has(name) || p.type_of(name) != prop_type::string || p.dimension(name) == 0)
        return {};
    return p.get_string(name);
}

std::vector<std::string> strings_of(const property_set& p, const char* name)
{
    if (!p.has(name) || p.type_of(name) != prop_type::string)
        return {};
    return p.get_strings(name);
}

std::string number(double v)
{
    if (v == -DBL_MAX || v == double(INT_MIN))
        return "-inf";
    if (v == DBL_MAX || v == double(INT_MAX))
        return "inf";
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", v);
    return buffer;
}

// Numbers of a range property, with the host's unbounded defaults named as such.
std::string limit_of(const property_set& p, const char* name)
{
    if (!p.has(name))
        return {};
    std::vector<double> values;
    if (p.type_of(name) == prop_type::real)
        values = p.get_doubles(name);
    else if (p.type_of(name) == prop_type::integer)
        for (int v : p.get_ints(name))
            values.push_back(v);
    else
        return p.format(name);
    std::string out;
    for (double v : values)
        out += (out.empty() ? "" : ", ") + number(v);
    return out;
}

}  // namespace

param_info describe_param(const param& p)
{
    const property_set& props = p.properties();
    param_info info;
    info.name = p.name();
    info.type = short_type_name(p.type());
    info.label = text_of(props, kOfxPropLabel);
    info.script_name = text_of(props, kOfxParamPropScriptName);
    info.parent = text_of(props, kOfxParamPropParent);
    info.secret = props.has(kOfxParamPropSecret) && props.type_of(kOfxParamPropSecret) == prop_type::integer &&
                  props.get_int(kOfxParamPropSecret) != 0;
    if (p.has_value())
        info.default_value = props.format(kOfxParamPropDefault);
    info.min = limit_of(props, kOfxParamPropMin);
    info.max = limit_of(props, kOfxParamPropMax);
    info.display_min = limit_of(props, kOfxParamPropDisplayMin);
    info.display_max = limit_of(props, kOfxParamPropDisplayMax);
    info.options = strings_of(props, kOfxParamPropChoiceOption);
    return info;
}

context_info describe_context(const effect& d)
{
    context_info info;
    info.context = d.context();
    for (const auto& c : d.clips()) {
        const property_set& props = c->properties();
        clip_info ci;
        ci.name = c->name();
        ci.components = strings_of(props, kOfxImageEffectPropSupportedComponents);
        ci.optional = props.has(kOfxImageClipPropOptional) &&
                      props.type_of(kOfxImageClipPropOptional) == prop_type::integer &&
                      props.get_int(kOfxImageClipPropOptional) != 0;
        info.clips.push_back(std::move(ci));
    }
    for (const auto& p : d.params().params())
        info.params.push_back(describe_param(*p));
    return info;
}

plugin_info describe_plugin(const std::string& identifier, unsigned major, unsigned minor, const effect& d)
{
    const property_set& props = d.properties();
    plugin_info info;
    info.identifier = identifier;
    info.version_major = major;
    info.version_minor = minor;
    info.label = text_of(props, kOfxPropLabel);
    info.grouping = text_of(props, kOfxImageEffectPluginPropGrouping);
    info.description = text_of(props, kOfxPropPluginDescription);
    info.contexts = strings_of(props, kOfxImageEffectPropSupportedContexts);
    info.pixel_depths = strings_of(props, kOfxImageEffectPropSupportedPixelDepths);
    info.thread_safety = text_of(props, kOfxImageEffectPluginRenderThreadSafety);
    return info;
}

}  // namespace vl1::ofxhost
