// Files that a fuzz body hands to a reader that only reads from disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace vl1::fuzz {

/// A folder of this process below the system's temporary folder, made on first use and
/// removed when the process ends normally. Throws std::runtime_error if it can't be made.
const std::filesystem::path& scratch_dir();

/// Writes `size` bytes to `path`, replacing the file. Throws std::runtime_error on failure:
/// the harness's own trouble, not a finding about the input.
void write_scratch_file(const std::filesystem::path& path, const uint8_t* data, std::size_t size);

}  // namespace vl1::fuzz
