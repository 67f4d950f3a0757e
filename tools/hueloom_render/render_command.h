// hueloom-render from its arguments to its exit code: the one place where the renderer's
// errors become messages.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace vl1::render_tool {

/// Runs the command with the arguments behind the program name. Listings go to `out`,
/// progress and errors to `err` (`err_is_terminal` picks the progress bar). The exit codes
/// are those of render_error.h. `build_plugin_folder` is searched for the plug-in after
/// OFX_PLUGIN_PATH. With `open_editor` (hueloom-look) the plug-in's editor opens on the
/// input before anything is written, and what it leaves is the look. After SIGINT or SIGTERM
/// (tools/common/stop_signals.h) it stops after the frame at hand. Never throws.
int run_render_command(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                       bool err_is_terminal, const std::filesystem::path& build_plugin_folder,
                       bool open_editor = false);

}  // namespace vl1::render_tool
