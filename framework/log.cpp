#include "framework/log.h"

#include <syslog.h>

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

bool syslog_wants_notice() noexcept
{
    // setlogmask(0) reads the mask without changing it.
    return (setlogmask(0) & LOG_MASK(LOG_NOTICE)) != 0;
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
