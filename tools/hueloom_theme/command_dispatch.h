// The front of hueloom-theme: the overview, --help, finding and running a subcommand.
#pragma once

#include <string>
#include <vector>

#include "tools/hueloom_theme/theme_command.h"

namespace vl1::theme_tool {

/// Runs the command line `arguments` (without the program name) and gives the exit code.
/// Never throws: a failure inside a subcommand is reported on `io.err` with exit_failure.
int dispatch_theme_command(const std::vector<std::string>& arguments, command_io& io) noexcept;

}  // namespace vl1::theme_tool
