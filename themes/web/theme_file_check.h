// How the vault's download client is made: a web client whose downloads must read as theme
// files of the uid that was asked for before they replace anything.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "themes/theme_download_client.h"

namespace vl1 {

/// True if `bytes` read as a whole theme file (the theme file reader's rules) of theme `uid`;
/// otherwise false with `problem`.
bool is_theme_file_of_uid(std::span<const uint8_t> bytes, uint32_t uid, std::string& problem);

/// Makes hueloom_web_client_v1 objects that check every download with is_theme_file_of_uid;
/// hand it to hueloom_vault::set_web_client_factory.
theme_download_client_factory make_web_client_factory();

}  // namespace vl1
