// RapidJSON as the preset files use it. A preset file is user data: a member of an unexpected
// type must never end the process. The framework's checked JSON header turns the library's
// assertions into exceptions (one definition for the whole plug-in), and every public
// operation of the preset manager catches at its border. The code still tests each member's
// type before it reads it; the throw is only the last line of defence.
#pragma once

#include "framework/io/json_checked.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace vl1 {

/// Parse flags for preset files: iterative, so that a deeply nested file cannot exhaust the
/// stack.
inline constexpr unsigned preset_parse_flags = rapidjson::kParseIterativeFlag;

}  // namespace vl1
