#include "tools/hueloom_render/file_checks.h"

#include "tools/hueloom_render/output_file.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

render_error output_error(const fs::path& path, const std::string& why)
{
    return render_error(exit_code::output, fmt::format("cannot write {}: {}", path.string(), why));
}

fs::path resolved(const fs::path& path)
{
    std::error_code ec;
    const fs::path absolute = fs::absolute(path, ec);
    const fs::path canonical = fs::weakly_canonical(absolute, ec);
    return ec ? absolute.lexically_normal() : canonical;
}

}  // namespace

std::string non_regular_kind(const fs::path& path)
{
    struct stat st{};
    if (stat(path.c_str(), &st) != 0 || S_ISREG(st.st_mode))
        return {};
    if (S_ISDIR(st.st_mode))
        return "a folder";
    if (S_ISFIFO(st.st_mode))
        return "a FIFO";
    if (S_ISCHR(st.st_mode))
        return "a character device";
    if (S_ISBLK(st.st_mode))
        return "a block device";
    if (S_ISSOCK(st.st_mode))
        return "a socket";
    return "no regular file";
}

void require_regular_input(const fs::path& path, const std::string& what)
{
    if (const std::string kind = non_regular_kind(path); !kind.empty())
        throw render_error(exit_code::input, fmt::format("{}: it is {}, not a file", what, kind));
}

input_files::input_files(const std::vector<fs::path>& paths)
{
    for (const auto& path : paths) {
        by_path.emplace(resolved(path), path);
        struct stat st{};
        if (stat(path.c_str(), &st) == 0)
            by_id.emplace(std::make_pair(st.st_dev, st.st_ino), path);
    }
}

const fs::path* input_files::find(const fs::path& output) const
{
    struct stat st{};
    if (stat(output.c_str(), &st) == 0) {
        if (const auto it = by_id.find({st.st_dev, st.st_ino}); it != by_id.end())
            return &it->second;
    }
    const auto it = by_path.find(resolved(output));
    return it == by_path.end() ? nullptr : &it->second;
}

void check_output_file(const fs::path& path, const input_files& inputs, bool devices_taken)
{
    if (const fs::path* input = inputs.find(path)) {
        throw render_error(exit_code::usage, fmt::format("cannot write {}: it is the input {}, which would be lost",
                                                         path.string(), input->string()));
    }
    struct stat st{};
    const bool exists = stat(path.c_str(), &st) == 0;
    if (exists && devices_taken && S_ISCHR(st.st_mode))
        return;
    if (exists && !S_ISREG(st.st_mode))
        throw output_error(path, fmt::format("it is {}", non_regular_kind(path)));
    // Write protection is the user's word that the file stays, for root too.
    if (exists && (access(path.c_str(), W_OK) != 0 || (st.st_mode & 0222) == 0))
        throw output_error(path, fmt::format("the file is write-protected (mode {:04o}) and is left as it is",
                                             st.st_mode & 07777));
    check_output_folder(path);
}

}  // namespace vl1::render_tool
