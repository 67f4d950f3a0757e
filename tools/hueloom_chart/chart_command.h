// hueloom-chart OUT.(exr|tif|png) [--width W] [--height H]: writes the test chart.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vl1::chart_tool {

inline constexpr int default_chart_width = 1280;
inline constexpr int default_chart_height = 720;

/// Runs the command with the arguments behind the program name: 0 written, 1 the file
/// couldn't be written, 2 usage. Never throws.
int run_chart_command(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace vl1::chart_tool
