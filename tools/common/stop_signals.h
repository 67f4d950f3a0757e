// SIGINT and SIGTERM for the command-line tools. A tool asks its work to stop at the next
// safe point (between two files, or by a callback that ends a server or a download); if the
// work hasn't ended within the grace time, because a library is busy or blocked inside a
// call, the process removes the partial outputs registered here and ends at once. Either way
// the exit code is 130 for SIGINT and 143 for SIGTERM, as a shell reports a killed command.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>

namespace vl1::tools {

/// How long the work has after a signal before the process ends without it.
inline constexpr std::chrono::milliseconds stop_grace{700};

/// Blocks SIGINT and SIGTERM in the calling thread and in every thread started later, and
/// starts the thread that waits for them. Call first thing in main(), before any other thread
/// exists (libraries' thread pools included). A second call does nothing.
void install_stop_signals();

/// Whether a stop signal has arrived.
bool stop_requested() noexcept;
/// 130 or 143 after SIGINT or SIGTERM; 0 before any.
int stop_exit_code() noexcept;

/// Runs `callback` on the signal thread when a stop signal arrives (at once if one has
/// already); it must be quick and safe to call from another thread. Replaces the former one.
void on_stop(std::function<void()> callback);
/// Drops the callback again, before what it refers to goes away.
void clear_on_stop();

/// A file or folder that stands only while being written: if the process has to end before
/// the work does, it is removed first. Unregisters itself when destroyed.
class partial_output {
public:
    explicit partial_output(std::filesystem::path path);
    ~partial_output();
    partial_output(const partial_output&) = delete;
    partial_output& operator=(const partial_output&) = delete;

private:
    std::filesystem::path watched_path;
};

}  // namespace vl1::tools
