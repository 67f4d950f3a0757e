// Packing a theme folder into a theme file the way a user's theme gets there: through the
// vault's folder import, then the theme file writer.
#pragma once

#include <memory>
#include <string>

#include "color/hueloom_theme_v1.h"

namespace vl1::themegen {

/// Imports `folder` with the vault's folder import and writes the theme to `theme_path`
/// through a temporary file and a rename, so a failure never leaves a half-written file.
/// Gives the imported theme; null with `error` set (the import's English message, or what
/// else failed).
std::shared_ptr<const hueloom_theme_v1> pack_theme_folder(const std::string& folder, const std::string& theme_path,
                                                          std::string& error);

}  // namespace vl1::themegen
