// Where a theme lies on the server and in the local folder, and theme uids as text.
//
// For uid 0x0a1b2c3d ("0a1b2c3d"):
//   on the server   <server URL>/0a/1b/2c3d.hlt
//   while arriving  <local path>/0a1b2c3d.hlt~
//   in place        <local path>/theme_0a1b2c3d.hlt
// Only the final name has the "theme_" prefix.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vl1 {

/// Ending of a theme file that is still arriving (or was left behind by an interrupted run).
inline constexpr std::string_view theme_temp_suffix = ".hlt~";

/// A theme uid written by a person or a server: 1 to 8 hexadecimal digits of either case,
/// optionally behind "0x", with nothing else around them. 0 is no theme and is refused.
bool parse_theme_uid(std::string_view text, uint32_t& uid);

/// `uid` as 8 lower-case hexadecimal digits.
std::string theme_uid_hex(uint32_t uid);

/// server_url + "/" + hex[0..1] + "/" + hex[2..3] + "/" + hex[4..7] + ".hlt".
std::string constructThemeURL(const std::string& server_url, uint32_t uid);

/// local_path + "/" + hex + ".hlt~".
std::string constructLocalPathTemp(const std::string& local_path, uint32_t uid);

/// local_path + "/theme_" + hex + ".hlt".
std::string constructLocalPathFinal(const std::string& local_path, uint32_t uid);

}  // namespace vl1
