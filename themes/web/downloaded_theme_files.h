// The local side of a theme download: a file arrives under a temporary name and reaches its
// final name only after it has been read back and accepted as the theme that was asked for.
// A failed, stopped, truncated or refused download thus never replaces a theme file.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace vl1 {

/// Decides whether `bytes` are a complete theme file of the theme `uid`; on refusal sets
/// `problem` (plain English). The web client's default is is_theme_file_of_uid, which reads
/// the bytes with the theme file reader. It runs on the download's worker thread.
using theme_bytes_validator = std::function<bool(std::span<const uint8_t> bytes, uint32_t uid, std::string& problem)>;

/// Reads `temp_path` back (refused if larger than `max_bytes`), lets `validator` check it as
/// theme `uid` and renames it over `final_path`, which replaces a former file in one step.
/// Otherwise deletes the temporary file, leaves `final_path` as it was and returns false with
/// `problem`. Without a validator nothing is ever installed.
bool install_downloaded_theme(const std::string& temp_path, const std::string& final_path, uint32_t uid,
                              const theme_bytes_validator& validator, std::uint64_t max_bytes, std::string& problem);

/// Deletes every file of `folder` whose name ends in ".hlt~", the remains of downloads that
/// were cut off. Returns how many went. Never throws.
int remove_leftover_theme_downloads(const std::string& folder) noexcept;

}  // namespace vl1
