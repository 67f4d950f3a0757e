// `hueloom-host describe [PATH]`: loads every bundle found on PATH (':'-separated folders or
// bundles), sends Load, Describe and DescribeInContext for each context of each plug-in, and
// lists what the descriptors say.
#pragma once

#include <filesystem>
#include <ostream>
#include <vector>

namespace vl1::host_tool {

/// Exit code: 0 when every bundle described, 1 when one failed or none was found.
int describe_bundles(const std::vector<std::filesystem::path>& folders, std::ostream& out, std::ostream& err);

}  // namespace vl1::host_tool
