// Reader of the .cube LUT format.
#pragma once

#include <string>
#include <string_view>

#include "color/lut_argb.h"

namespace vl1 {

/// Parses the text of a .cube file into a table of the file's edge (red slowest in memory,
/// though the file has red fastest). `source_name` names the file in error messages. See
/// lut_reader_cube.cpp for the grammar this reads.
/// Throws std::logic_error "ERROR while loading CUBE LUT: Less values than dimension^3 are
/// not supported." (with the place appended) when the data ends early or holds a line of
/// fewer than three values; std::invalid_argument or std::out_of_range for tokens that
/// aren't numbers, keyword lines with too few tokens or an edge below 2.
lut_argb_variable read_lut_cube(std::string_view text, const std::string& source_name);

}  // namespace vl1
