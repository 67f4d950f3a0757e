// Replacing a file so that a crash, a full disk or a failed write in the middle leaves the
// previous file as it was: the new bytes go to a temporary file in the same folder, reach the
// disk, and are renamed over the old file in one step.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace vl1 {

/// Writes `bytes` as the file `path`: temporary file beside it, every write checked, fsync,
/// rename, folder synced. False, with `problem` naming the file, on any failure; then the
/// old file is as it was and no temporary file is left. A symbolic link is followed (its
/// target is replaced and the link stays); a target that exists and is no regular file (a
/// device, a pipe) is written in place, every write checked.
bool write_file_atomically(const std::filesystem::path& path, std::span<const uint8_t> bytes, std::string& problem);

/// As above, for text.
bool write_file_atomically(const std::filesystem::path& path, std::string_view text, std::string& problem);

/// A name for a temporary file beside `path`: hidden, without the extension of `path` and
/// ending in ".tmp", so that no reader of the plug-in's folders lists it; unique among
/// threads and processes.
std::filesystem::path temporary_path_beside(const std::filesystem::path& path);

/// For files that another writer has filled in full at `written` (in the folder of
/// `path`): syncs it, renames it to `path` and syncs the folder. False, with `problem`
/// naming `path`, on failure; `written` is removed then.
bool move_file_into_place(const std::filesystem::path& written, const std::filesystem::path& path,
                          std::string& problem);

}  // namespace vl1
