// Replacing a theme file without ever leaving a broken one where a good one stood.
#pragma once

#include <string>

#include "color/hueloom_theme_v1.h"

namespace vl1 {

/// Writes `theme` to a temporary file beside `path` (a hidden name ending in ".tmp", which no
/// reader of theme files looks at), flushes it to the disk and renames it to `path` in one
/// step. On failure the temporary file is removed, whatever stood at `path` stays, and
/// `problem` says what failed.
bool write_theme_file_atomically(const hueloom_theme_v1& theme, const std::string& path, std::string& problem);

}  // namespace vl1
