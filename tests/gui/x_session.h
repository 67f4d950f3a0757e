// An X server of the test's own (Xvfb) with a window manager, and the small tools a person's
// hands stand in for: finding windows, pressing keys, reading the screen.
#pragma once

#include <sys/types.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace hueloom_test {

class x_session {
public:
    /// Starts Xvfb with one screen of `width` x `height` and openbox on it, and points this
    /// process's DISPLAY at it (so the tools started below see it too).
    x_session(int width, int height);
    ~x_session();

    bool ready() const { return display_number >= 0; }
    /// The X server's process, whose memory holds the windows and pixmaps of its clients.
    pid_t server_pid() const { return server; }

    /// Output of a shell command (stderr discarded).
    static std::string shell(const std::string& command);
    /// The window titled exactly `title`, waiting up to `seconds`; 0 if none appeared.
    static unsigned long wait_for_window(const std::string& title, double seconds);
    /// Closes `window` (titled `title`) by the window manager's close key, pressing it again
    /// while the window stays: on a busy machine the manager now and then lets one pass without
    /// acting on it, and a person would press it again. True once no such window is left.
    static bool close_by_window_manager(unsigned long window, const std::string& title);
    /// Width and height of a window as the window manager reports them.
    static std::pair<int, int> window_size(unsigned long window);
    /// Screen position of a window's top-left corner (inside its decoration).
    static std::pair<int, int> window_origin(unsigned long window);
    /// The colour at screen point (x, y), as 8-bit r, g, b.
    static std::array<int, 3> screen_pixel(int x, int y);
    /// The share of pixels lighter than mid-grey in the screen rectangle (x, y, w, h): light
    /// text on the editor's dark greys.
    static double light_share(int x, int y, int w, int h);

    /// A click of `button` (1 left, 3 right) at screen point (x, y), with `modifier` held
    /// ("alt", "ctrl" or empty).
    static void click(int x, int y, int button = 1, const std::string& modifier = "");
    /// Left button down at (x0, y0), moved in steps to (x1, y1), released.
    static void drag(int x0, int y0, int x1, int y1);
    /// Keys in xdotool's names ("Return", "ctrl+z"), pressed one after the other.
    static void keys(const std::string& names);
    /// Text typed as it stands.
    static void type(const std::string& text);
    /// Waits `seconds`, so that the editor's loop has run.
    static void settle(double seconds = 0.4);
    /// The whole screen as a PNG file.
    static void screenshot(const std::filesystem::path& file);

private:
    int display_number = -1;
    pid_t server = -1, manager = -1;
};

/// A program started in the background with its stderr in a file; wait() reaps it.
class background_process {
public:
    background_process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                       const std::filesystem::path& log_file);
    ~background_process();
    /// The exit code, or -1 if it doesn't end within `seconds` (it is then killed).
    int wait(double seconds);

private:
    pid_t pid = -1;
};

}  // namespace hueloom_test
