// The promises of the LUT readers, shared by the .cube and .3dl bodies.
#pragma once

#include <string_view>

#include "color/lut_reader.h"

namespace vl1::fuzz {

/// Reads `text` as a file of `type` through the format's own reader and through
/// load_lut_from_memory, and checks: only the std::logic_error family escapes, with a
/// message of the readers' one shape; a table has an edge of at least 2, edge³ cells and
/// alpha 1.0 everywhere; both ways agree on whether the file reads.
void check_lut_text(const char* target, std::string_view text, lut_file_type type);

}  // namespace vl1::fuzz
