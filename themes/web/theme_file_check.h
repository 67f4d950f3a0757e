// The check that a downloaded file passes before it replaces anything: it must read as a
// theme file of the uid that was asked for. hueloom_web_client_v1 uses it unless told
// otherwise.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "themes/theme_download_client.h"

namespace vl1 {

/// True if `bytes` read as a whole theme file (the theme file reader's rules) of theme `uid`;
/// otherwise false with `problem`.
bool is_theme_file_of_uid(std::span<const uint8_t> bytes, uint32_t uid, std::string& problem);

/// Makes hueloom_web_client_v1 objects (which check every download with
/// is_theme_file_of_uid); for hueloom_vault::set_web_client_factory.
theme_download_client_factory make_web_client_factory();

}  // namespace vl1
