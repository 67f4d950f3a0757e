// Reading a whole file into memory, for every reader of the plug-in and its tools.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vl1 {

/// Reads the regular file `path` whole, if it holds at most `cap` bytes. False, with
/// `problem` naming the file (and the byte offset where reading stopped), for a missing file,
/// anything but a regular file (a pipe, a device or a folder is never opened), a file above
/// `cap`, and a read error. `bytes` holds the file only on success.
bool read_bounded_file(const std::filesystem::path& path, std::uintmax_t cap, std::vector<uint8_t>& bytes,
                       std::string& problem);

/// As above, into text.
bool read_bounded_file(const std::filesystem::path& path, std::uintmax_t cap, std::string& text,
                       std::string& problem);

}  // namespace vl1
