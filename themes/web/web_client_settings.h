// The two settings of the theme download: the server's base address (`web_url_base`) and the
// themes to fetch from it (`wanted_theme_uids`). They come from the environment:
//   HUELOOM_THEME_SERVER   base URL, http:// or https://, e.g. "https://themes.example/v1"
//   HUELOOM_WANTED_THEMES  comma-separated theme uids in hexadecimal, e.g. "00000001,0a1b2c3d"
// Unset or unusable means no server: the plug-in then works with the themes on disk and never
// touches the network.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace vl1 {

inline constexpr const char* theme_server_variable = "HUELOOM_THEME_SERVER";
inline constexpr const char* wanted_themes_variable = "HUELOOM_WANTED_THEMES";

struct web_client_settings {
    /// Base URL without trailing "/"; empty for no server.
    std::string web_url_base;
    std::set<uint32_t> wanted_theme_uids;
};

/// The base URL that `text` names, trimmed and without trailing "/". Empty, with `problem`
/// set, unless it starts with "http://" or "https://" (either case), has a host part and holds
/// no blank or control character. An empty text gives empty without a problem.
std::string theme_server_url_from_text(const std::string& text, std::string& problem);

/// The uids of a comma-separated list. Blanks around entries and empty entries are passed
/// over; an entry that parse_theme_uid refuses is left out with a line in `problems`.
std::set<uint32_t> theme_uids_from_text(const std::string& text, std::vector<std::string>& problems);

/// Both settings from the environment. Every problem goes to the standard error stream, and
/// an unusable server address counts as none.
web_client_settings read_web_client_settings();

}  // namespace vl1
