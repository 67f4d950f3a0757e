// Loading a LUT file of either text format as the table of edge 32 that themes keep.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "color/lut_argb.h"

namespace vl1 {

enum class lut_file_type { unknown, cube, three_dl };

/// The type by the text behind the last '.' of `file_name`, in any case ("a.b.CUBE" is a
/// .cube file); a name without '.' is taken whole and so is unknown.
lut_file_type lut_file_type_of(std::string_view file_name);

/// Reads `folder` joined with `file_name` (a '/' between them unless `folder` ends in one;
/// an absolute `file_name` stands alone). Null for an unknown type, without touching the
/// file system, and for anything but a regular file (a folder, a named pipe, a device).
/// Throws on a broken file: the format readers' std::logic_error family (lut_reader_cube.h,
/// lut_reader_3dl.h), with the file name, line and problem in the message;
/// std::length_error, naming the file, for a file above 256 MiB or one that can't be read.
std::shared_ptr<lut_argb<32>> load_lut_from_file_or_resource(std::string folder, std::string file_name);

/// The same for the bytes of a file already in memory; `file_name` gives the type and
/// names the file in messages.
std::shared_ptr<lut_argb<32>> load_lut_from_memory(std::string_view bytes, const std::string& file_name);

}  // namespace vl1
