#include "framework/log.h"

#include <paths.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>

namespace vl1 {

namespace {

struct log_sinks {
    bool to_stderr = false;
};

const log_sinks& sinks() noexcept
{
    static const log_sinks s = [] {
        openlog("Hueloom", LOG_PID, LOG_USER);
        log_sinks result;
        const char* mode = std::getenv("HUELOOM_LOG");
        result.to_stderr = mode != nullptr && std::strcmp(mode, "stderr") == 0;
        return result;
    }();
    return s;
}

using capture_fn = std::function<void(std::string_view)>;

std::mutex capture_mutex;
std::shared_ptr<const capture_fn> capture;  // guarded by capture_mutex

std::shared_ptr<const capture_fn> current_capture() noexcept
{
    std::lock_guard lock(capture_mutex);
    return capture;
}

// Whether a syslog daemon takes datagrams (or, failing that type, connections) at
// _PATH_LOG, found as the C library looks for it.
bool daemon_listens() noexcept
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, _PATH_LOG, sizeof(address.sun_path) - 1);
    for (const int type : {SOCK_DGRAM, SOCK_STREAM}) {
        const int fd = socket(AF_UNIX, type | SOCK_CLOEXEC, 0);
        if (fd < 0)
            return false;
        const bool connected = connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
        const int error = errno;
        close(fd);
        if (connected)
            return true;
        if (error != EPROTOTYPE)
            return false;
    }
    return false;
}

// Without a daemon, syslog() tries to connect anew for every line (a socket, a failed connect
// and a close: some 9 us, five times in every render action). So whether one listens is asked
// at most once a second, and lines go to syslog() only while one does; the C library keeps its
// own connection to it once made. A daemon that starts or stops is noticed within a second.
bool syslog_listening() noexcept
{
    using clock = std::chrono::steady_clock;
    static std::atomic<clock::rep> next_check{clock::time_point::min().time_since_epoch().count()};
    static std::atomic<bool> listening{false};
    const clock::time_point now = clock::now();
    if (now.time_since_epoch().count() >= next_check.load(std::memory_order_relaxed)) {
        next_check.store((now + std::chrono::seconds(1)).time_since_epoch().count(), std::memory_order_relaxed);
        listening.store(daemon_listens(), std::memory_order_relaxed);
    }
    return listening.load(std::memory_order_relaxed);
}

bool syslog_wants_notice() noexcept
{
    // setlogmask(0) reads the mask without changing it.
    return (setlogmask(0) & LOG_MASK(LOG_NOTICE)) != 0 && syslog_listening();
}

}  // namespace

bool log_enabled() noexcept
{
    const bool to_stderr = sinks().to_stderr;  // first: opens the syslog connection
    return to_stderr || syslog_wants_notice() || current_capture() != nullptr;
}

void log_text(std::string_view text) noexcept
{
    const bool to_stderr = sinks().to_stderr;
    const int length = static_cast<int>(text.size());
    if (syslog_wants_notice())
        syslog(LOG_NOTICE, "%.*s", length, text.data());
    if (to_stderr)
        std::fprintf(stderr, "Hueloom: %.*s\n", length, text.data());
    if (const auto sink = current_capture()) {
        try {
            (*sink)(text);
        } catch (...) {
            // A test's capture that throws must not take the plug-in down.
        }
    }
}

void log_runtime(std::string_view format, fmt::format_args args) noexcept
{
    if (!log_enabled())
        return;
    try {
        char buffer[log_line_capacity];
        const auto result = fmt::vformat_to_n(buffer, sizeof(buffer) - 1, fmt::string_view(format.data(), format.size()), args);
        const std::size_t size = result.size < sizeof(buffer) - 1 ? result.size : sizeof(buffer) - 1;
        log_text(std::string_view(buffer, size));
    } catch (...) {
        log_text(format);
    }
}

void set_log_capture(std::function<void(std::string_view)> fn)
{
    auto next = fn ? std::make_shared<const capture_fn>(std::move(fn)) : nullptr;
    std::lock_guard lock(capture_mutex);
    capture = std::move(next);
}

}  // namespace vl1
