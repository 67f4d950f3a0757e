#include "host/param_kind.h"

#include "ofx/api/ofx_param.h"

#include <cfloat>
#include <climits>
#include <cstring>
#include <iterator>

namespace vl1::ofxhost {

namespace {

using value_shape::reals;
using value_shape::integers;
using value_shape::text;
using interpolation::linear;
using interpolation::linear_rounded;
using interpolation::step;

const param_kind kinds[] = {
    {kOfxParamTypeDouble, reals, 1, linear},
    {kOfxParamTypeInteger, integers, 1, linear_rounded},
    {kOfxParamTypeBoolean, integers, 1, step},
    {kOfxParamTypeChoice, integers, 1, step},
    {kOfxParamTypeRGBA, reals, 4, linear},
    {kOfxParamTypeRGB, reals, 3, linear},
    {kOfxParamTypeDouble2D, reals, 2, linear},
    {kOfxParamTypeInteger2D, integers, 2, linear_rounded},
    {kOfxParamTypeDouble3D, reals, 3, linear},
    {kOfxParamTypeInteger3D, integers, 3, linear_rounded},
    {kOfxParamTypeString, text, 0, step},
    {kOfxParamTypeCustom, text, 0, step},
    {kOfxParamTypePushButton, value_shape::none, 0, interpolation::none},
    {kOfxParamTypeGroup, value_shape::none, 0, interpolation::none},
    {kOfxParamTypePage, value_shape::none, 0, interpolation::none},
};

bool has_range(const param_kind& kind)
{
    const std::string type = kind.type;
    return type == kOfxParamTypeDouble || type == kOfxParamTypeInteger || type == kOfxParamTypeDouble2D ||
           type == kOfxParamTypeInteger2D || type == kOfxParamTypeDouble3D || type == kOfxParamTypeInteger3D;
}

void define_numbers(property_set& props, const param_kind& kind)
{
    const auto n = static_cast<std::size_t>(kind.count);
    if (kind.shape == reals) {
        props.define_double(kOfxParamPropDefault, std::vector<double>(n, 0.0));
        if (!has_range(kind))
            return;
        props.define_double(kOfxParamPropMin, std::vector<double>(n, -DBL_MAX));
        props.define_double(kOfxParamPropMax, std::vector<double>(n, DBL_MAX));
        props.define_double(kOfxParamPropDisplayMin, std::vector<double>(n, -DBL_MAX));
        props.define_double(kOfxParamPropDisplayMax, std::vector<double>(n, DBL_MAX));
        props.define_double(kOfxParamPropIncrement, {1.0});
        props.define_int(kOfxParamPropDigits, {2});
        props.define_string(kOfxParamPropDoubleType, {"OfxParamDoubleTypePlain"});
    } else {
        props.define_int(kOfxParamPropDefault, std::vector<int>(n, 0));
        if (!has_range(kind))
            return;
        props.define_int(kOfxParamPropMin, std::vector<int>(n, INT_MIN));
        props.define_int(kOfxParamPropMax, std::vector<int>(n, INT_MAX));
        props.define_int(kOfxParamPropDisplayMin, std::vector<int>(n, INT_MIN));
        props.define_int(kOfxParamPropDisplayMax, std::vector<int>(n, INT_MAX));
    }
}

void define_value_properties(property_set& props, const param_kind& kind)
{
    props.define_int(kOfxParamPropAnimates, {1});
    props.define_int(kOfxParamPropIsAnimating, {0});
    props.define_int(kOfxParamPropIsAutoKeying, {0});
    props.define_int(kOfxParamPropPersistant, {1});
    props.define_int(kOfxParamPropEvaluateOnChange, {1});
    props.define_int(kOfxParamPropPluginMayWrite, {0});
    props.define_int(kOfxParamPropCanUndo, {1});
    props.define_string(kOfxParamPropCacheInvalidation, {"OfxParamInvalidateValueChange"});
    if (kind.shape == text) {
        props.define_string(kOfxParamPropDefault, {""});
        if (std::strcmp(kind.type, kOfxParamTypeString) == 0) {
            props.define_string(kOfxParamPropStringMode, {"OfxParamStringIsSingleLine"});
        }
        return;
    }
    define_numbers(props, kind);
    if (std::strcmp(kind.type, kOfxParamTypeChoice) == 0) {
        props.define_string(kOfxParamPropChoiceOption, {}, prop_dimension::variable);
    }
}

}  // namespace

const param_kind* find_param_kind(const char* type)
{
    if (type == nullptr)
        return nullptr;
    for (const auto& k : kinds) {
        if (std::strcmp(k.type, type) == 0)
            return &k;
    }
    return nullptr;
}

std::string short_type_name(const char* type)
{
    const std::string prefix = "OfxParamType";
    const std::string name = type;
    return name.rfind(prefix, 0) == 0 ? name.substr(prefix.size()) : name;
}

void define_param_properties(property_set& props, const param_kind& kind, const std::string& name)
{
    props.define_string(kOfxPropType, {kOfxTypeParameter});
    props.define_string(kOfxPropName, {name});
    props.define_string(kOfxParamPropType, {kind.type});
    for (const char* fixed : {kOfxPropType, kOfxPropName, kOfxParamPropType})
        props.protect(fixed);
    props.define_string(kOfxPropLabel, {name});
    props.define_string(kOfxPropShortLabel, {name});
    props.define_string(kOfxPropLongLabel, {name});
    props.define_string(kOfxParamPropScriptName, {name});
    props.define_int(kOfxParamPropSecret, {0});
    props.define_int(kOfxParamPropEnabled, {1});
    props.define_string(kOfxParamPropHint, {""});
    props.define_string(kOfxParamPropParent, {""});
    props.define_pointer(kOfxParamPropDataPtr, nullptr);
    if (kind.shape != value_shape::none)
        define_value_properties(props, kind);
    if (std::strcmp(kind.type, kOfxParamTypeGroup) == 0) props.define_int("OfxParamPropGroupOpen", {1});
    if (std::strcmp(kind.type, kOfxParamTypePage) == 0) {
        props.define_string("OfxParamPropPageChild", {}, prop_dimension::variable);
    }
}

}  // namespace vl1::ofxhost
