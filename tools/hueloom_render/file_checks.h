// Checks of the files a command names, made before anything is read or written, so that a
// mistake costs no render and never costs the user a file.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vl1::render_tool {

/// What stands at `path` when it isn't a regular file: "a folder", "a FIFO", "a character
/// device"...; empty for a regular file or nothing at all. Links are followed.
std::string non_regular_kind(const std::filesystem::path& path);

/// Throws render_error (input), with `what` ("cannot read shot.exr") in front of the reason,
/// when `path` exists but is no regular file: reading a FIFO or a device may block or never end.
void require_regular_input(const std::filesystem::path& path, const std::string& what);

/// The files a command reads, known by their path with links resolved and by device and inode.
class input_files {
public:
    explicit input_files(const std::vector<std::filesystem::path>& paths = {});
    /// The input that `output` would replace, or null.
    const std::filesystem::path* find(const std::filesystem::path& output) const;

private:
    std::map<std::filesystem::path, std::filesystem::path> by_path;
    std::map<std::pair<dev_t, ino_t>, std::filesystem::path> by_id;
};

/// Throws render_error for an output that would cost the user a file: (usage) when it is one
/// of `inputs`, (output) when it is a folder or a file that the user may not write, and when
/// its folder can't take a new file. With `devices_taken`, a character device (a terminal,
/// /dev/stdout) passes: a text file is written into it in place.
void check_output_file(const std::filesystem::path& path, const input_files& inputs = input_files(),
                       bool devices_taken = false);

}  // namespace vl1::render_tool
