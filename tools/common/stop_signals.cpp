#include "tools/common/stop_signals.h"

#include <errno.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <list>
#include <mutex>
#include <string>
#include <thread>

namespace vl1::tools {

namespace {

std::atomic<int> exit_code{0};
std::mutex registry_mutex;  // guards the two below
std::function<void()> stop_callback;
std::list<std::filesystem::path> partial_paths;

sigset_t stop_signal_set()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

// Removes what is half written and ends the process; the work had its chance.
[[noreturn]] void end_now(int code)
{
    {
        std::lock_guard lock(registry_mutex);
        for (const auto& path : partial_paths) {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
    }
    const std::string line = std::string(program_invocation_short_name) + ": interrupted\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
    _exit(code);
}

void wait_for_signals()
{
    const sigset_t set = stop_signal_set();
    int received = 0;
    while (sigwait(&set, &received) != 0) {
    }
    exit_code = 128 + received;
    {
        // Under the lock, so that clear_on_stop() can't return while the callback runs.
        std::lock_guard lock(registry_mutex);
        if (stop_callback)
            stop_callback();
    }
    // The work ends by itself within the grace time, or a second signal ends it at once.
    timespec grace{0, static_cast<long>(std::chrono::nanoseconds(stop_grace).count())};
    siginfo_t info{};
    while (true) {
        const int again = sigtimedwait(&set, &info, &grace);
        if (again > 0 || errno == EAGAIN)
            break;
    }
    end_now(exit_code);
}

}  // namespace

void install_stop_signals()
{
    static std::once_flag once;
    std::call_once(once, [] {
        const sigset_t set = stop_signal_set();
        pthread_sigmask(SIG_BLOCK, &set, nullptr);
        std::thread(wait_for_signals).detach();
    });
}

bool stop_requested() noexcept { return exit_code.load() != 0; }

int stop_exit_code() noexcept { return exit_code.load(); }

void on_stop(std::function<void()> callback)
{
    {
        std::lock_guard lock(registry_mutex);
        stop_callback = callback;
    }
    if (stop_requested() && callback)
        callback();
}

void clear_on_stop()
{
    std::lock_guard lock(registry_mutex);
    stop_callback = nullptr;
}

partial_output::partial_output(std::filesystem::path path) : watched_path(std::move(path))
{
    std::lock_guard lock(registry_mutex);
    partial_paths.push_back(watched_path);
}

partial_output::~partial_output()
{
    std::lock_guard lock(registry_mutex);
    for (auto it = partial_paths.begin(); it != partial_paths.end(); ++it) {
        if (*it == watched_path) {
            partial_paths.erase(it);
            break;
        }
    }
}

}  // namespace vl1::tools
