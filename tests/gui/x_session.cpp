#include "tests/gui/x_session.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <thread>

extern char** environ;

namespace hueloom_test {
namespace {

pid_t spawn(const std::vector<std::string>& argv, int out_fd, int err_fd)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    if (out_fd >= 0)
        posix_spawn_file_actions_adddup2(&actions, out_fd, 1);
    if (err_fd >= 0)
        posix_spawn_file_actions_adddup2(&actions, err_fd, 2);
    std::vector<char*> args;
    for (const auto& a : argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    pid_t pid = -1;
    if (posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), environ) != 0)
        pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

void stop(pid_t pid)
{
    if (pid <= 0)
        return;
    kill(pid, SIGTERM);
    int status = 0;
    waitpid(pid, &status, 0);
}

}  // namespace

x_session::x_session(int width, int height)
{
    int fds[2];
    if (pipe(fds) != 0)
        return;
    const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    const int quiet = open("/dev/null", O_WRONLY);
    server = spawn({"Xvfb", "-displayfd", std::to_string(fds[1]), "-screen", "0", screen, "-nolisten", "tcp"}, quiet,
                   quiet);
    close(fds[1]);
    char number[16] = {};
    const ssize_t n = server > 0 ? read(fds[0], number, sizeof number - 1) : -1;
    close(fds[0]);
    if (n <= 0) {
        close(quiet);
        return;
    }
    display_number = std::atoi(number);
    setenv("DISPLAY", (":" + std::to_string(display_number)).c_str(), 1);
    manager = spawn({"openbox"}, quiet, quiet);
    close(quiet);
    // Windows mapped before openbox manages the screen get no frame and no close by it; on a
    // busy machine that takes seconds.
    const auto managed = [] {
        return shell("xprop -root _NET_SUPPORTING_WM_CHECK").find("window id") != std::string::npos;
    };
    for (int i = 0; i < 300 && !managed(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
}

x_session::~x_session()
{
    stop(manager);
    stop(server);
    unsetenv("DISPLAY");
}

std::string x_session::shell(const std::string& command)
{
    std::string out;
    if (FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r")) {
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
            out += buffer;
        pclose(pipe);
    }
    return out;
}

unsigned long x_session::wait_for_window(const std::string& title, double seconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < end) {
        const std::string found = shell("xdotool search --name '^" + title + "$'");
        if (!found.empty())
            return std::stoul(found);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return 0;
}

bool x_session::close_by_window_manager(unsigned long window, const std::string& title)
{
    for (int attempt = 0; attempt < 6; ++attempt) {
        if (wait_for_window(title, 0.1) == 0)
            return true;
        shell("xdotool windowactivate --sync " + std::to_string(window) + " key alt+F4");
        for (int i = 0; i < 50 && wait_for_window(title, 0.1) != 0; ++i)
            settle(0.1);
    }
    return wait_for_window(title, 0.1) == 0;
}

std::pair<int, int> x_session::window_size(unsigned long window)
{
    std::istringstream text(shell("xdotool getwindowgeometry --shell " + std::to_string(window)));
    int w = 0, h = 0;
    for (std::string line; std::getline(text, line);) {
        if (line.rfind("WIDTH=", 0) == 0)
            w = std::stoi(line.substr(6));
        if (line.rfind("HEIGHT=", 0) == 0)
            h = std::stoi(line.substr(7));
    }
    return {w, h};
}

std::pair<int, int> x_session::window_origin(unsigned long window)
{
    // xdotool counts the window manager's frame twice here; xwininfo reports the client's
    // own corner.
    std::istringstream text(shell("xwininfo -id " + std::to_string(window)));
    int x = 0, y = 0;
    for (std::string line; std::getline(text, line);) {
        if (const auto at = line.find("Absolute upper-left X:"); at != std::string::npos)
            x = std::stoi(line.substr(at + 22));
        if (const auto at = line.find("Absolute upper-left Y:"); at != std::string::npos)
            y = std::stoi(line.substr(at + 22));
    }
    return {x, y};
}

void x_session::click(int x, int y, int button, const std::string& modifier)
{
    const std::string move = "xdotool mousemove --sync " + std::to_string(x) + " " + std::to_string(y);
    const std::string press = " click " + std::to_string(button);
    if (modifier.empty())
        shell(move + press);
    else
        shell(move + " keydown " + modifier + press + " keyup " + modifier);
    settle(0.3);
}

void x_session::drag(int x0, int y0, int x1, int y1)
{
    std::string command = "xdotool mousemove --sync " + std::to_string(x0) + " " + std::to_string(y0) + " mousedown 1";
    for (int step = 1; step <= 8; ++step) {
        command += " mousemove --sync " + std::to_string(x0 + (x1 - x0) * step / 8) + " " +
                   std::to_string(y0 + (y1 - y0) * step / 8) + " sleep 0.03";
    }
    shell(command + " mouseup 1");
    settle(0.3);
}

void x_session::keys(const std::string& names)
{
    shell("xdotool key --delay 60 " + names);
    settle(0.3);
}

void x_session::type(const std::string& text)
{
    shell("xdotool type --delay 20 '" + text + "'");
    settle(0.2);
}

void x_session::settle(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

void x_session::screenshot(const std::filesystem::path& file)
{
    std::filesystem::create_directories(file.parent_path());
    shell("import -silent -window root '" + file.string() + "'");
}

std::array<int, 3> x_session::screen_pixel(int x, int y)
{
    // ImageMagick's text form: "0,0: (r,g,b)  #RRGGBB  srgb(...)".
    const std::string text = shell("import -silent -window root -crop 1x1+" + std::to_string(x) + "+" +
                                   std::to_string(y) + " -depth 8 txt:-");
    const auto open = text.find('(', text.find('\n'));
    std::array<int, 3> rgb{-1, -1, -1};
    if (open != std::string::npos)
        std::sscanf(text.c_str() + open, "(%d,%d,%d", &rgb[0], &rgb[1], &rgb[2]);
    return rgb;
}

double x_session::light_share(int x, int y, int w, int h)
{
    const std::string text = shell("import -silent -window root -crop " + std::to_string(w) + "x" + std::to_string(h) +
                                   "+" + std::to_string(x) + "+" + std::to_string(y) +
                                   " miff:- | convert miff:- +repage -colorspace Gray -threshold 50% "
                                   "-format '%[fx:mean]' info:-");
    return text.empty() ? -1.0 : std::atof(text.c_str());
}

background_process::background_process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                                       const std::filesystem::path& log_file)
{
    std::vector<std::string> argv{program.string()};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    const int log = open(log_file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid = spawn(argv, log, log);
    if (log >= 0)
        close(log);
}

background_process::~background_process()
{
    if (pid > 0)
        wait(0);
}

int background_process::wait(double seconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    int status = 0;
    while (pid > 0) {
        if (waitpid(pid, &status, WNOHANG) == pid) {
            pid = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        if (std::chrono::steady_clock::now() >= end) {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            pid = -1;
            return -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return -1;
}

}  // namespace hueloom_test
