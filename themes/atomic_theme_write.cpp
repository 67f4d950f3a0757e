#include "themes/atomic_theme_write.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fmt/format.h>

#include "themes/hueloom_theme_file_serializer_v1.h"

namespace vl1 {

namespace {

namespace fs = std::filesystem;

// Unique within the folder even when several threads or processes store the same theme.
fs::path temporary_path_for(const fs::path& path)
{
    static std::atomic<unsigned> counter{0};
    const std::string name = fmt::format(".{}.{}-{}.tmp", path.filename().string(), static_cast<long>(getpid()), counter++);
    return path.parent_path() / name;
}

bool flush_to_disk(const fs::path& path)
{
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    const int fsync_errno = errno;
    ::close(fd);
    errno = fsync_errno;
    return synced;
}

}  // namespace

bool write_theme_file_atomically(const hueloom_theme_v1& theme, const std::string& path, std::string& problem)
{
    const fs::path target(path);
    const fs::path temporary = temporary_path_for(target);
    std::error_code error;
    if (!hueloom_theme_file_serializer_v1::write_theme_to_file(theme, temporary.string())) {
        problem = fmt::format("writing '{}' failed", temporary.string());
    } else if (!flush_to_disk(temporary)) {
        problem = fmt::format("flushing '{}' to the disk failed: {}", temporary.string(), std::strerror(errno));
    } else {
        fs::rename(temporary, target, error);
        if (!error)
            return true;
        problem = fmt::format("renaming '{}' to '{}' failed: {}", temporary.string(), path, error.message());
    }
    fs::remove(temporary, error);
    return false;
}

}  // namespace vl1
