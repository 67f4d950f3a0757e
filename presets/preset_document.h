// What a parsed preset means for a component: the name check, the parameter list and the
// state bytes. Every member's type is tested before it is read; a member of the wrong type
// counts as missing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/icomponent.h"
#include "presets/preset_json.h"

namespace vl1 {

/// True if the root has no "plugin_name", or one that is a string equal to `name`.
bool preset_plugin_name_matches(const rapidjson::Value& root, const std::string& name);

/// "parameters", if "parameter_count" is an integer of at least 1 and "parameters" an array
/// of exactly that many elements; otherwise null.
const rapidjson::Value* preset_parameter_list(const rapidjson::Value& root);

/// Applies one element of "parameters": the parameter of its "param_id" whose name equals
/// "param_name" gets its current value, with "param_value" taken over where "param_type"
/// matches the parameter's type, through set_param_value (not from the host). An element
/// without such a parameter changes nothing. The continuous type is recognised by the
/// spelling "continuos" only, so the value of a continuous parameter comes back through the
/// state blob, never through this list.
void apply_preset_parameter(const rapidjson::Value& element, icomponent_v1& component);

/// The state blob: "plugin_state_size" of at least 1 and "plugin_state" an array of exactly
/// that many integers from 0 to 255. False (and `state` empty) otherwise.
bool read_preset_state(const rapidjson::Value& root, std::vector<uint8_t>& state);

}  // namespace vl1
