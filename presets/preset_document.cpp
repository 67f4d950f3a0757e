#include "presets/preset_document.h"

#include <cstring>

#include "framework/iparameter.h"

namespace vl1 {

namespace {

const rapidjson::Value* member(const rapidjson::Value& object, const char* key)
{
    if (!object.IsObject())
        return nullptr;
    const auto it = object.FindMember(key);
    return it == object.MemberEnd() ? nullptr : &it->value;
}

bool string_member_equals(const rapidjson::Value& object, const char* key, const char* expected)
{
    const rapidjson::Value* v = member(object, key);
    return v != nullptr && v->IsString() && std::strcmp(v->GetString(), expected) == 0 &&
           v->GetStringLength() == std::strlen(expected);
}

bool read_color(const rapidjson::Value& v, param_argb& out)
{
    if (!v.IsArray() || v.Size() != 4)
        return false;
    for (rapidjson::SizeType i = 0; i < 4; ++i) {
        if (!v[i].IsNumber())
            return false;
    }
    // The order of param_argb: alpha, red, green, blue.
    out.a = static_cast<float>(v[0].GetDouble());
    out.r = static_cast<float>(v[1].GetDouble());
    out.g = static_cast<float>(v[2].GetDouble());
    out.b = static_cast<float>(v[3].GetDouble());
    return true;
}

// Takes "param_value" into `value` if "param_type" names the parameter's own type.
void take_over_value(const rapidjson::Value& element, param_value& value)
{
    const rapidjson::Value* v = member(element, "param_value");
    if (v == nullptr)
        return;
    switch (value.type) {
    case param_type::continuous:
        if (string_member_equals(element, "param_type", "continuos") && v->IsNumber())
            value.value.f = static_cast<float>(v->GetDouble());
        break;
    case param_type::integral:
        if (string_member_equals(element, "param_type", "integral") && v->IsInt())
            value.value.i = v->GetInt();
        break;
    case param_type::boolean:
        if (string_member_equals(element, "param_type", "boolean") && v->IsBool())
            value.value.b = v->GetBool() ? 1 : 0;
        break;
    case param_type::color:
        if (string_member_equals(element, "param_type", "color"))
            read_color(*v, value.value.argb);
        break;
    default:
        break;
    }
}

}  // namespace

bool preset_plugin_name_matches(const rapidjson::Value& root, const std::string& name)
{
    const rapidjson::Value* v = member(root, "plugin_name");
    if (v == nullptr)
        return true;
    return v->IsString() && std::string(v->GetString(), v->GetStringLength()) == name;
}

const rapidjson::Value* preset_parameter_list(const rapidjson::Value& root)
{
    const rapidjson::Value* count = member(root, "parameter_count");
    const rapidjson::Value* list = member(root, "parameters");
    if (count == nullptr || !count->IsInt() || count->GetInt() < 1)
        return nullptr;
    if (list == nullptr || !list->IsArray() || list->Size() != static_cast<rapidjson::SizeType>(count->GetInt()))
        return nullptr;
    return list;
}

void apply_preset_parameter(const rapidjson::Value& element, icomponent_v1& component)
{
    const rapidjson::Value* id = member(element, "param_id");
    const rapidjson::Value* name = member(element, "param_name");
    if (id == nullptr || !id->IsUint() || name == nullptr || !name->IsString())
        return;
    const auto param = component.get_parameter(uid::from_value(id->GetUint()));
    if (!param || param->get_name() != std::string(name->GetString(), name->GetStringLength()))
        return;
    param_value value = param->get_param_value();
    take_over_value(element, value);
    param->set_param_value(value, false);
}

bool read_preset_state(const rapidjson::Value& root, std::vector<uint8_t>& state)
{
    state.clear();
    const rapidjson::Value* size = member(root, "plugin_state_size");
    const rapidjson::Value* bytes = member(root, "plugin_state");
    if (size == nullptr || !size->IsUint64() || size->GetUint64() < 1)
        return false;
    if (bytes == nullptr || !bytes->IsArray() || bytes->Size() != size->GetUint64())
        return false;
    state.reserve(bytes->Size());
    for (const auto& byte : bytes->GetArray()) {
        if (!byte.IsUint() || byte.GetUint() > 255) {
            state.clear();
            return false;
        }
        state.push_back(static_cast<uint8_t>(byte.GetUint()));
    }
    return true;
}

}  // namespace vl1
