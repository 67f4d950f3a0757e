// A contact sheet of all pictures for people to look at: every picture as drawn and at
// scale 1, and the toolbar and panel put together from them roughly as the editor lays them
// out. Written into the build tree, never into the bundle.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "gui/artwork/paint.h"

namespace vl1::artwork {

/// The drawn pictures by file name.
using picture_set = std::map<std::string, surface_ptr>;

/// Writes the sheet as PNG; throws std::runtime_error if it can't, or if a picture that the
/// mock-ups need is missing from `pictures`.
void write_contact_sheet(const picture_set& pictures, const std::filesystem::path& path);

}  // namespace vl1::artwork
