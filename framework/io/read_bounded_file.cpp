#include "framework/io/read_bounded_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include <fmt/format.h>

namespace vl1 {

namespace {

class file_descriptor {
public:
    explicit file_descriptor(int fd) : fd(fd) {}
    ~file_descriptor()
    {
        if (fd >= 0)
            ::close(fd);
    }
    file_descriptor(const file_descriptor&) = delete;
    file_descriptor& operator=(const file_descriptor&) = delete;

    int get() const { return fd; }

private:
    int fd;
};

template <typename Buffer>
bool read_into(const std::filesystem::path& path, std::uintmax_t cap, Buffer& out, std::string& problem)
{
    const std::string name = path.string();
    // O_NONBLOCK: should the path become a FIFO between a check and the open, the open
    // doesn't wait for a writer; fstat then refuses it.
    file_descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat st{};
    if (file.get() < 0 || ::fstat(file.get(), &st) != 0) {
        problem = fmt::format("cannot read '{}': {}", name, std::strerror(errno));
        return false;
    }
    if (!S_ISREG(st.st_mode)) {
        problem = fmt::format("cannot read '{}': not a regular file", name);
        return false;
    }
    const auto size = static_cast<std::uintmax_t>(st.st_size);
    if (size > cap) {
        problem = fmt::format("cannot read '{}': it has {} bytes, more than the {} such a file may have", name, size,
                              cap);
        return false;
    }
    Buffer bytes(static_cast<std::size_t>(size), 0);
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = ::read(file.get(), bytes.data() + done, bytes.size() - done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            problem = got < 0 ? fmt::format("cannot read '{}' at byte {}: {}", name, done, std::strerror(errno))
                              : fmt::format("cannot read '{}': it ends at byte {} of {}", name, done, size);
            return false;
        }
        done += static_cast<std::size_t>(got);
    }
    out = std::move(bytes);
    return true;
}

}  // namespace

bool read_bounded_file(const std::filesystem::path& path, std::uintmax_t cap, std::vector<uint8_t>& bytes,
                       std::string& problem)
{
    return read_into(path, cap, bytes, problem);
}

bool read_bounded_file(const std::filesystem::path& path, std::uintmax_t cap, std::string& text, std::string& problem)
{
    return read_into(path, cap, text, problem);
}

}  // namespace vl1
