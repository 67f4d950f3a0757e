// --theme and --preset: a look brought into the instance the way a project brings it, through
// the state text the plug-in reads when its instance is created, plus the parameter values a
// host would hold beside it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vl1::render_tool {

/// What the instance starts with: the "binaryStateParam" text, and NAME=VALUE settings for
/// the host's parameters.
struct start_look {
    std::string state_text;
    std::vector<std::string> settings;
};

/// --preset FILE.json: the preset's state blob as state text, and its parameter values as
/// settings for the parameters named in `param_names` (the plug-in's, in its order). Throws
/// render_error (input) for a file that isn't a readable preset.
start_look read_preset_option(const std::string& file, const std::vector<std::string>& param_names);

/// --theme UID|NAME|FILE.hlt: `state_text` with its theme record replaced by that theme (a
/// new state is made when `state_text` holds none). Themes are looked up in FILE, in the
/// app-data folder and among the bundle's built-in ones. Throws render_error (usage) for an
/// unknown theme, listing those that exist, and (input) for an unreadable theme file.
std::string state_text_with_theme(const std::string& state_text, const std::string& theme,
                                  const std::vector<std::string>& param_names, const std::filesystem::path& bundle);

}  // namespace vl1::render_tool
