#include "framework/io/write_file_atomically.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

#include <fmt/format.h>

namespace vl1 {

namespace {

namespace fs = std::filesystem;

std::string failure(const fs::path& path, const std::string& what)
{
    return fmt::format("cannot write '{}': {}", path.string(), what);
}

std::string errno_text() { return std::strerror(errno); }

bool close_checked(int fd)
{
    // A close that fails after a write may be the first news of a lost write (NFS, quotas).
    return ::close(fd) == 0 || errno == EINTR;
}

/// Writes all of `bytes` to `fd`; false with errno set on the first failed write.
bool write_all(int fd, std::span<const uint8_t> bytes, std::size_t& done)
{
    done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0) {
            if (put == 0)
                errno = ENOSPC;
            return false;
        }
        done += static_cast<std::size_t>(put);
    }
    return true;
}

bool write_fd(int fd, const fs::path& shown, std::span<const uint8_t> bytes, bool sync, std::string& problem)
{
    std::size_t done = 0;
    if (!write_all(fd, bytes, done)) {
        problem = failure(shown, fmt::format("writing failed at byte {} of {}: {}", done, bytes.size(), errno_text()));
        ::close(fd);
        return false;
    }
    if (sync && ::fsync(fd) != 0) {
        problem = failure(shown, fmt::format("flushing to the disk failed: {}", errno_text()));
        ::close(fd);
        return false;
    }
    if (!close_checked(fd)) {
        problem = failure(shown, fmt::format("closing failed: {}", errno_text()));
        return false;
    }
    return true;
}

fs::path folder_of(const fs::path& path) { return path.has_parent_path() ? path.parent_path() : fs::path("."); }

bool sync_folder(const fs::path& folder)
{
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

/// `path` with symbolic links followed, so that a link stays a link and its target changes.
fs::path resolved_target(const fs::path& path)
{
    std::error_code ec;
    if (!fs::is_symlink(fs::symlink_status(path, ec)))
        return path;
    const fs::path target = fs::weakly_canonical(path, ec);
    return ec ? path : target;
}

bool write_in_place(const fs::path& target, const fs::path& shown, std::span<const uint8_t> bytes,
                    std::string& problem)
{
    const int fd = ::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0) {
        problem = failure(shown, errno_text());
        return false;
    }
    return write_fd(fd, shown, bytes, false, problem);
}

/// Renames the synced file `written` to `target` and syncs the folder; on failure removes
/// `written` and names `shown` in `problem`.
bool rename_into_place(const fs::path& written, const fs::path& target, const fs::path& shown, std::string& problem)
{
    std::error_code ec;
    fs::rename(written, target, ec);
    if (ec) {
        problem = failure(shown, ec.message());
        fs::remove(written, ec);
        return false;
    }
    // The rename is only durable once the folder's entry is; the file stands complete either way.
    sync_folder(folder_of(target));
    return true;
}

}  // namespace

fs::path temporary_path_beside(const fs::path& path)
{
    static std::atomic<unsigned> counter{0};
    return folder_of(path) /
           fmt::format(".{}.{}-{}.tmp", path.stem().string(), static_cast<long>(::getpid()), counter++);
}

bool move_file_into_place(const fs::path& written, const fs::path& path, std::string& problem)
{
    std::error_code ec;
    const int fd = ::open(written.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0 || ::fsync(fd) != 0) {
        problem = failure(path, fmt::format("flushing to the disk failed: {}", errno_text()));
        if (fd >= 0)
            ::close(fd);
        fs::remove(written, ec);
        return false;
    }
    ::close(fd);
    return rename_into_place(written, path, path, problem);
}

bool write_file_atomically(const fs::path& path, std::span<const uint8_t> bytes, std::string& problem)
{
    const fs::path target = resolved_target(path);
    struct stat st{};
    if (::stat(target.c_str(), &st) == 0 && !S_ISREG(st.st_mode)) {
        if (S_ISDIR(st.st_mode)) {
            problem = failure(path, "it is a folder");
            return false;
        }
        return write_in_place(target, path, bytes, problem);
    }
    const fs::path temporary = temporary_path_beside(target);
    // 0666 less the umask, as any new file; an existing file's mode is carried over below.
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) {
        problem = failure(path, fmt::format("no temporary file in '{}': {}", folder_of(target).string(), errno_text()));
        return false;
    }
    if (::stat(target.c_str(), &st) == 0)
        ::fchmod(fd, st.st_mode & 07777);
    if (!write_fd(fd, path, bytes, true, problem)) {
        std::error_code ec;
        fs::remove(temporary, ec);
        return false;
    }
    return rename_into_place(temporary, target, path, problem);
}

bool write_file_atomically(const fs::path& path, std::string_view text, std::string& problem)
{
    return write_file_atomically(path, std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size()), problem);
}

}  // namespace vl1
