// The folder form of a generated theme, exactly as a theme author would hand it to the
// folder import: theme.json, one .cube file per look, the post-processing .cube file and
// the wheel picture.
#pragma once

#include <string>

#include "tools/theme_generator/theme_recipe.h"

namespace vl1::themegen {

/// Generates every file of `recipe` into `folder`, which is created if needed; files of the
/// same names are replaced. The picture is rendered from the LUTs as read back from their
/// .cube files, so it shows exactly what the theme will hold. False with `error` set.
bool write_theme_folder(const theme_recipe& recipe, const std::string& folder, std::string& error);

/// theme.json for `recipe`, with the keys that the folder import reads.
std::string theme_json_text(const theme_recipe& recipe);

}  // namespace vl1::themegen
