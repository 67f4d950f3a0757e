// Turning a folder that the user prepared into a theme: a theme.json with the name, version,
// uid, background image and LUTs, beside the files it names.
//
// theme.json, all keys at the root unless said otherwise:
//   "name" string (required)            "version" integer >= 1 (required)
//   "uid" string, hexadecimal (required when "version" is not 1; without it a new uid is made)
//   "wheel": {"background": file name}  "luts": [{"name": LUT file, "rotation": degrees}, ...]
//   "post_processing": {"enabled": bool, "lut": LUT file (needed when enabled)} (optional)
// A leading UTF-8 byte order mark is skipped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "color/hueloom_theme_v1.h"

namespace vl1 {

/// Largest theme.json and background image an import reads; larger ones are refused as
/// unreadable rather than read whole into memory.
inline constexpr std::uintmax_t largest_theme_json_bytes = 16u << 20;
inline constexpr std::uintmax_t largest_background_bytes = 64u << 20;
/// Most wheel LUTs an import takes (one per degree); more end as an unexpected error.
inline constexpr std::size_t most_imported_wheel_luts = 360;

/// Reads `folder` into a new theme; nothing on disk or elsewhere is changed. On failure both
/// texts get the failure's English and German text (theme_import_failure.h), the English one
/// is logged, and the result is empty. A document of another shape than the one above, a
/// background image that can't be found, a LUT file that fails to parse and any other
/// exception end as "Unexpected error." / "Unerwarteter Fehler.", with the cause logged.
/// Never throws.
std::shared_ptr<hueloom_theme_v1> import_theme_folder(const std::string& folder, std::string& english_error,
                                                      std::string& german_error) noexcept;

}  // namespace vl1
