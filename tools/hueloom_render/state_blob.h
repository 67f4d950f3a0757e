// The parts of the plug-in's saved state that a renderer may build or read without knowing
// the effect: the base part (magic "s1vc", int32 record count, then per parameter the 44-byte
// value record and the uid, 48 bytes, little-endian) and the base64 text around it.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vl1::render_tool {

/// The parameters the plug-in's component owns: all it defines but the editor button and
/// the state parameter.
std::size_t component_parameter_count(const std::vector<std::string>& param_names);

/// The base part of `state_text` when it holds one of the expected size for `parameters`;
/// otherwise a base part with no records, so that the host's values stand.
std::vector<uint8_t> base_part_of_state(const std::string& state_text, std::size_t parameters);

std::string encode_state(const std::vector<uint8_t>& blob);
/// Empty for text that isn't base64.
std::vector<uint8_t> decode_state(const std::string& text);

/// Why the plug-in would not take `blob` as its saved state, or "" when it would: garbage
/// without the base part's magic, records cut off, a theme record that is cut off or doesn't
/// read (the plug-in's own words for that). `parameters` is component_parameter_count's.
std::string state_problem(const std::vector<uint8_t>& blob, std::size_t parameters);

/// (uid, value as text) of each continuous or boolean record of the base part.
std::vector<std::pair<uint32_t, std::string>> parameter_values_of_state(const std::vector<uint8_t>& blob);

}  // namespace vl1::render_tool
