// The plug-in's one logging facility. Lines go to syslog (ident "Hueloom", LOG_USER, level
// LOG_NOTICE) while a syslog daemon listens; with HUELOOM_LOG=stderr also to the standard
// error stream as "Hueloom: <text>". Nothing is formatted while no sink wants the line.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

#include <fmt/core.h>

namespace vl1 {

/// Longest formatted line in bytes, terminator included; longer text is cut.
inline constexpr std::size_t log_line_capacity = 500;

/// True if a written line would go anywhere (a syslog daemon listens and syslog's mask admits
/// the level, stderr is on, or a capture is installed).
bool log_enabled() noexcept;

/// Writes `text` as it stands, without formatting and without a length limit.
void log_text(std::string_view text) noexcept;

/// Formats a run-time format text; if it doesn't format (stray braces, e.g. a JSON document,
/// or too few arguments) the format text itself is logged. Never throws.
void log_runtime(std::string_view format, fmt::format_args args) noexcept;

/// log_runtime with the arguments packed in place.
template <typename... Args>
void log_dynamic(std::string_view format, const Args&... args) noexcept
{
    if (!log_enabled())
        return;
    log_runtime(format, fmt::make_format_args(args...));
}

/// Formats with {fmt} (placeholders checked at compile time) into a 500-byte buffer and
/// writes the line. A formatting failure logs the raw format text instead.
template <typename... Args>
void log(fmt::format_string<Args...> format, Args&&... args) noexcept
{
    if (!log_enabled())
        return;
    try {
        char buffer[log_line_capacity];
        const auto result = fmt::format_to_n(buffer, sizeof(buffer) - 1, format, std::forward<Args>(args)...);
        const std::size_t size = result.size < sizeof(buffer) - 1 ? result.size : sizeof(buffer) - 1;
        log_text(std::string_view(buffer, size));
    } catch (...) {
        const fmt::string_view raw = format;
        log_text(std::string_view(raw.data(), raw.size()));
    }
}

/// Routes every line also to `capture` (tests assert on the lines); null removes it.
void set_log_capture(std::function<void(std::string_view)> capture);

}  // namespace vl1
