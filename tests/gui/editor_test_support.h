// What the editor tests share: hueloom-look opened on a flat picture in a real X server, the
// editor's geometry on screen, and the look it leaves behind (--state-out).
#pragma once

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/gui/x_session.h"

namespace hueloom_test {

inline constexpr const char* editor_title = "Varnlight - Hueloom";

std::string read_text(const std::filesystem::path& p);
/// A 640 x 360 picture of one colour.
std::filesystem::path write_flat_picture(const std::filesystem::path& dir);

/// One opening of the editor through hueloom-look, with the settings in `arguments`; the look
/// left at closing goes to state.txt and graded.png in `dir`.
class open_editor {
public:
    open_editor(const std::filesystem::path& dir, const std::vector<std::string>& arguments);
    bool opened() const { return window != 0; }
    /// Waits for the tool's end; its exit code.
    int close_and_wait();
    std::string log() const { return read_text(log_file); }
    /// Parameter values of state.txt ("Angle" -> "45").
    std::map<std::string, std::string> settings() const;

    /// Screen point of (x, y) points in the editor's right column (0 = its left edge) and of
    /// the panel below the toolbar, at `zoom` pixels per point (the desktop's scale).
    int column_x(double x) const { return origin.first + width - pixels(494) + pixels(x); }
    int column_y(double y) const { return origin.second + pixels(y); }
    int panel_y(double y) const { return column_y(64 + y); }

    unsigned long window = 0;
    double zoom = 1.0;  // pixels per point
    std::filesystem::path dir, log_file, state_file, graded_file;

private:
    int pixels(double points) const { return static_cast<int>(std::lround(points * zoom)); }

    std::unique_ptr<background_process> process;
    std::pair<int, int> origin{0, 0};
    int width = 0;
};

// The panel's wheel for the built-in picture of 450 points: (16, 108, 467, 559), a 12-point
// marker, reach (451 - 4.75) / 451.
inline constexpr double wheel_left = 16, wheel_top = 108, wheel_size = 451, wheel_marker = 12;
inline constexpr double wheel_max_radius = (451 - 4.75) / 451;
// The hue slider's track (16, 613, 467, 635) and the chroma slider's, 60 points lower.
inline constexpr double hue_track_y = 599 + 14 + 11;

using rgb = std::array<int, 3>;
/// Whether no channel of the two colours differs by more than `tolerance`.
inline bool near(const rgb& a, const rgb& b, int tolerance)
{
    return std::abs(a[0] - b[0]) <= tolerance && std::abs(a[1] - b[1]) <= tolerance &&
           std::abs(a[2] - b[2]) <= tolerance;
}

/// Types `name` into the file dialog titled `title`, which is opening, and presses its OK;
/// false if no such dialog appeared.
bool answer_file_dialog(const std::string& title, const std::string& name);

/// Angle and strength the wheel gives for a click (px, py) points from its corner.
std::pair<double, double> wheel_reading(double px, double py);
/// A value of `settings`, -1 if it isn't there.
double number(const std::map<std::string, std::string>& settings, const std::string& name);

/// Where screenshots go for people to look at: build/editor-shots/ in the build tree.
std::filesystem::path shots_dir();

/// `hueloom-theme serve` on 127.0.0.1 at a port of its choosing, sending theme files at
/// `rate_kib` KiB a second so that a download takes long enough to be watched.
class theme_server {
public:
    theme_server(const std::filesystem::path& folder, int rate_kib);
    /// The base address ("http://127.0.0.1:PORT"); empty if the server didn't start.
    std::string url;

private:
    std::unique_ptr<background_process> process;
};

/// A port on 127.0.0.1 that nothing listens on.
int unused_port();

}  // namespace hueloom_test
