// Reader of the .3dl LUT format.
#pragma once

#include <string>
#include <string_view>

#include "color/lut_argb.h"

namespace vl1 {

/// Parses the text of a .3dl file into a table of the file's edge. `source_name` names the
/// file in error messages. See lut_reader_3dl.cpp for the grammar this reads.
/// Throws std::logic_error "ERROR while loading 3DL LUT: Less values than needed." (with the
/// place appended) when the data ends early; std::invalid_argument or std::out_of_range for
/// tokens that aren't numbers, a white-space-only header line or an edge below 2.
lut_argb_variable read_lut_3dl(std::string_view text, const std::string& source_name);

}  // namespace vl1
