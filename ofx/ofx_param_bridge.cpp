#include "ofx/ofx_param_bridge.h"

#include <cmath>
#include <limits>

#include "framework/cparameter.h"
#include "framework/log.h"
#include "ofx/ofx_host_interface.h"
#include "ofx/ofx_param_names.h"

namespace vl1 {

double no_particular_time() { return std::numeric_limits<double>::quiet_NaN(); }

namespace {

void define_component_parameter(const host_suites& suites, OfxParamSetHandle param_set,
                                iparameter_v1& param)
{
    const param_value v = param.get_param_value();
    const std::string name = param.get_name();
    const bool hidden = (param.get_flags() & param_flag_hidden) != 0;
    const OfxPropertySuiteV1& props = *suites.property;
    OfxPropertySetHandle p = nullptr;

    switch (v.type) {
    case param_type::continuous:
        suites.parameter->paramDefine(param_set, kOfxParamTypeDouble, name.c_str(), &p);
        props.propSetDouble(p, kOfxParamPropDefault, 0, v.default_value.f);
        props.propSetDouble(p, kOfxParamPropMin, 0, v.min.f);
        props.propSetDouble(p, kOfxParamPropMax, 0, v.max.f);
        props.propSetDouble(p, kOfxParamPropDisplayMin, 0, v.min.f);
        props.propSetDouble(p, kOfxParamPropDisplayMax, 0, v.max.f);
        break;
    case param_type::integral:
        suites.parameter->paramDefine(param_set, kOfxParamTypeInteger, name.c_str(), &p);
        props.propSetInt(p, kOfxParamPropDefault, 0, v.default_value.i);
        props.propSetInt(p, kOfxParamPropMin, 0, v.min.i);
        props.propSetInt(p, kOfxParamPropMax, 0, v.max.i);
        // Set through the double setter although the parameter is integral.
        props.propSetDouble(p, kOfxParamPropDisplayMin, 0, v.min.i);
        props.propSetDouble(p, kOfxParamPropDisplayMax, 0, v.max.i);
        break;
    case param_type::boolean:
        suites.parameter->paramDefine(param_set, kOfxParamTypeBoolean, name.c_str(), &p);
        props.propSetInt(p, kOfxParamPropDefault, 0, v.default_value.b != 0 ? 1 : 0);
        break;
    case param_type::color: {
        suites.parameter->paramDefine(param_set, kOfxParamTypeRGBA, name.c_str(), &p);
        const param_argb& d = v.default_value.argb;
        const double rgba[4] = {d.r, d.g, d.b, d.a};
        props.propSetDoubleN(p, kOfxParamPropDefault, 4, rgba);
        break;
    }
    default:
        return;
    }
    if (p == nullptr)
        return;
    props.propSetString(p, kOfxParamPropScriptName, 0, name.c_str());
    props.propSetString(p, kOfxPropLabel, 0, name.c_str());
    // Colour parameters are never hidden, whatever the flag says.
    if (hidden && v.type != param_type::color)
        props.propSetInt(p, kOfxParamPropSecret, 0, 1);
}

/// Reads the host's value of `param` into `v`; false if the host refused.
bool read_host_value(const host_suites& suites, OfxParamHandle handle, double time, param_value& v)
{
    const bool timed = !std::isnan(time);
    auto get = [&](auto... out) {
        return timed ? suites.parameter->paramGetValueAtTime(handle, time, out...)
                     : suites.parameter->paramGetValue(handle, out...);
    };
    switch (v.type) {
    case param_type::continuous: {
        double d = 0.0;
        if (get(&d) != kOfxStatOK)
            return false;
        v.value.f = static_cast<float>(d);
        return true;
    }
    case param_type::integral: {
        int i = 0;
        if (get(&i) != kOfxStatOK)
            return false;
        v.value.i = i;
        return true;
    }
    case param_type::boolean: {
        int i = 0;
        if (get(&i) != kOfxStatOK)
            return false;
        v.value.b = static_cast<uint8_t>(i & 0xff);  // only the low byte counts
        return true;
    }
    case param_type::color: {
        double r = 0.0, g = 0.0, b = 0.0, a = 0.0;
        if (get(&r, &g, &b, &a) != kOfxStatOK)
            return false;
        v.value.argb = param_argb{static_cast<float>(a), static_cast<float>(r), static_cast<float>(g),
                                  static_cast<float>(b)};
        return true;
    }
    default:
        return false;
    }
}

/// Hands a host value to the parameter through its typed class, marked as from the host.
void set_from_host(iparameter_v1& param, const param_value& v)
{
    switch (v.type) {
    case param_type::continuous:
        if (auto* p = dynamic_cast<cparameter_continuous_v1*>(&param))
            p->set_value(v.value.f, true);
        break;
    case param_type::integral:
        if (auto* p = dynamic_cast<cparameter_integral_v1*>(&param))
            p->set_value(v.value.i, true);
        break;
    case param_type::boolean:
        if (auto* p = dynamic_cast<cparameter_boolean_v1*>(&param))
            p->set_value(v.value.b != 0, true);
        break;
    case param_type::color:
        if (auto* p = dynamic_cast<cparameter_color_v1*>(&param))
            p->set_value(v.value.argb, true);
        break;
    default:
        break;
    }
}

OfxStatus write_host_value(const host_suites& suites, OfxParamHandle handle, bool keyed, double time,
                           const param_value& v)
{
    auto set = [&](auto... values) {
        return keyed ? suites.parameter->paramSetValueAtTime(handle, time, values...)
                     : suites.parameter->paramSetValue(handle, values...);
    };
    switch (v.type) {
    case param_type::continuous:
        return set(static_cast<double>(v.value.f));
    case param_type::integral:
        return set(static_cast<int>(v.value.i));
    case param_type::boolean:
        return set(static_cast<int>(v.value.b != 0 ? 1 : 0));
    case param_type::color: {
        const param_argb& c = v.value.argb;
        return set(static_cast<double>(c.r), static_cast<double>(c.g), static_cast<double>(c.b),
                   static_cast<double>(c.a));
    }
    default:
        return kOfxStatOK;
    }
}

}  // namespace

void DefineParameters(const host_suites& suites, OfxImageEffectHandle effect,
                      const std::shared_ptr<icomponent_v1>& component)
{
    OfxParamSetHandle param_set = nullptr;
    suites.effect->getParamSet(effect, &param_set);
    const int count = component->get_parameter_count();

    OfxPropertySetHandle p = nullptr;
    suites.parameter->paramDefine(param_set, kOfxParamTypePushButton, open_gui_param_name, &p);
    if (p != nullptr)
        suites.property->propSetInt(p, kOfxParamPropEvaluateOnChange, 0, 0);

    p = nullptr;
    suites.parameter->paramDefine(param_set, kOfxParamTypeCustom, state_param_name, &p);
    if (p != nullptr) {
        suites.property->propSetInt(p, kOfxParamPropSecret, 0, 1);
        suites.property->propSetInt(p, kOfxParamPropPersistant, 0, 1);
    }

    p = nullptr;
    suites.parameter->paramDefine(param_set, kOfxParamTypeInteger, editor_request_param_name, &p);
    if (p != nullptr) {
        suites.property->propSetInt(p, kOfxParamPropSecret, 0, 1);
        suites.property->propSetInt(p, kOfxParamPropAnimates, 0, 0);
        suites.property->propSetInt(p, kOfxParamPropEvaluateOnChange, 0, 1);
    }

    for (int i = 0; i < count; ++i) {
        if (auto param = component->get_parameter(i))
            define_component_parameter(suites, param_set, *param);
    }
}

void SetAllParamsToComponent(const host_suites& suites, double time, OfxImageEffectHandle effect,
                             const std::shared_ptr<icomponent_v1>& component)
{
    OfxParamSetHandle param_set = nullptr;
    if (suites.effect->getParamSet(effect, &param_set) != kOfxStatOK)
        return;
    auto host = std::dynamic_pointer_cast<ofx_host_interface>(component->get_host());
    const int count = component->get_parameter_count();
    for (int i = 0; i < count; ++i) {
        auto param = component->get_parameter(i);
        // A value the host refused to take is newer than the one it would give back.
        if (!param || (host && host->is_dirty_param(i)))
            continue;
        OfxParamHandle handle = nullptr;
        if (suites.parameter->paramGetHandle(param_set, param->get_name().c_str(), &handle, nullptr) != kOfxStatOK)
            continue;
        param_value v = param->get_param_value();
        if (read_host_value(suites, handle, time, v))
            set_from_host(*param, v);
    }
    PushDirtyParamsToHost(suites, no_particular_time(), effect, component);
}

bool PushDirtyParamsToHost(const host_suites& suites, double time, OfxImageEffectHandle effect,
                           const std::shared_ptr<icomponent_v1>& component)
{
    OfxParamSetHandle param_set = nullptr;
    if (suites.effect->getParamSet(effect, &param_set) != kOfxStatOK)
        return false;
    auto host = std::dynamic_pointer_cast<ofx_host_interface>(component->get_host());
    if (!host)
        return true;
    std::vector<int32_t> refused;
    for (int index = host->pop_dirty_param(); index != -1; index = host->pop_dirty_param()) {
        auto param = component->get_parameter(index);
        if (!param)
            continue;
        OfxParamHandle handle = nullptr;
        if (suites.parameter->paramGetHandle(param_set, param->get_name().c_str(), &handle, nullptr) != kOfxStatOK)
            continue;
        unsigned int keys = 0;
        suites.parameter->paramGetNumKeys(handle, &keys);
        const bool keyed = keys != 0 && !std::isnan(time);
        if (keyed)
            log("Setting keypoint, because parameter has keypoints activated!");
        if (write_host_value(suites, handle, keyed, time, param->get_param_value()) != kOfxStatOK)
            refused.push_back(index);
    }
    // Hosts may refuse writes during a render; the values wait for an action that may write.
    for (int32_t index : refused)
        host->requeue_dirty_param(index);
    if (!refused.empty())
        log("The host refused {0} parameter value(s); they are written at its next action.", refused.size());
    return refused.empty();
}

}  // namespace vl1
