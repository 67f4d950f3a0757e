#include "tools/hueloom_render/output_file.h"

#include "framework/io/write_file_atomically.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

fs::path folder_of(const fs::path& path) { return path.has_parent_path() ? path.parent_path() : fs::path("."); }

render_error output_error(const fs::path& path, const std::string& why)
{
    return render_error(exit_code::output, fmt::format("cannot write {}: {}", path.string(), why));
}

fs::path make_temp_folder(const fs::path& final_path)
{
    static std::atomic<unsigned> counter{0};
    const fs::path folder = folder_of(final_path);
    for (int attempt = 0; attempt < 100; ++attempt) {
        const fs::path candidate =
            folder / fmt::format(".hueloom-render-{}-{}", static_cast<long>(getpid()), counter.fetch_add(1));
        std::error_code ec;
        if (fs::create_directory(candidate, ec))
            return candidate;
        if (ec)
            throw output_error(final_path, fmt::format("no temporary folder in {}: {}", folder.string(), ec.message()));
    }
    throw output_error(final_path, "no free temporary folder name");
}

}  // namespace

void check_output_folder(const fs::path& path)
{
    const fs::path folder = folder_of(path);
    std::error_code ec;
    const auto status = fs::status(folder, ec);
    if (!fs::exists(status))
        throw output_error(path, fmt::format("folder {} does not exist", folder.string()));
    if (!fs::is_directory(status))
        throw output_error(path, fmt::format("{} is not a folder", folder.string()));
    if (access(folder.c_str(), W_OK | X_OK) != 0) {
        throw output_error(path, fmt::format("folder {} is not writable ({})", folder.string(), std::strerror(errno)));
    }
}

pending_output::pending_output(fs::path final_path) : destination(std::move(final_path))
{
    temp_folder = make_temp_folder(destination);
    temporary_path = temp_folder / destination.filename();
    partial = std::make_unique<vl1::tools::partial_output>(temp_folder);
}

pending_output::~pending_output()
{
    if (temp_folder.empty())
        return;
    std::error_code ignored;
    fs::remove_all(temp_folder, ignored);
}

void pending_output::commit()
{
    std::string problem;
    if (!vl1::move_file_into_place(temporary_path, destination, problem))
        throw render_error(exit_code::output, problem);
    std::error_code ec;
    fs::remove(temp_folder, ec);
    temp_folder.clear();
    partial.reset();
}

}  // namespace vl1::render_tool
