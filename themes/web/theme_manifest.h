// The theme server's manifest: which version of which theme the server holds.
//
// A JSON object whose every member name is a theme uid in hexadecimal and whose value is the
// integer version of that theme on the server, for instance {"00000001": 3, "0a1b2c3d": 1}.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vl1 {

/// Server version by theme uid.
using theme_versions = std::unordered_map<uint32_t, int>;

/// Reads a manifest. Accepted is a JSON object with no other content, whose member names
/// parse_theme_uid takes, each uid once, and whose values are integers from 0 to 2^31 - 1.
/// Anything else gives false with `problem` in plain English naming the first offence, and
/// leaves `versions` untouched. Throws nothing but std::bad_alloc.
bool parse_theme_manifest(std::string_view body, theme_versions& versions, std::string& problem);

}  // namespace vl1
