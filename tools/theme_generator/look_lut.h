// A look as a table of edge 32, and that table as a .cube file of the same edge.
#pragma once

#include <string>

#include "color/lut_argb.h"
#include "tools/theme_generator/look_params.h"

namespace vl1::themegen {

/// The table of `look` on the grid i / 31 per axis (red slowest, blue fastest), alpha 1.0.
lut_argb<32> build_look_lut(const look_params& look);

/// Writes `lut` as a .cube file of edge 32: a comment, TITLE, LUT_3D_SIZE 32, then 32768
/// lines "r g b" with red fastest and six decimals, so the LUT reader copies the table
/// without resampling. False with `error` set if the file can't be written.
bool write_cube_32(const lut_argb<32>& lut, const std::string& path, const std::string& title, std::string& error);

}  // namespace vl1::themegen
