// What hueloom-render tells while it works: on a terminal one bar that redraws itself, with
// frames per second and the time left; elsewhere (a log file, a pipe) one plain line per
// frame; with --quiet nothing.
#pragma once

#include <chrono>
#include <ostream>
#include <string>

namespace vl1::render_tool {

enum class progress_style { quiet, lines, bar };

/// "[#####-----]  5/10  2.5 fps  0:02 left": the bar line without the carriage return.
std::string progress_bar_text(int done, int total, double seconds, int bar_width = 30);
/// "0:07", "12:34", "1:02:03" for whole seconds.
std::string duration_text(double seconds);

class progress_report {
public:
    progress_report(std::ostream& err, progress_style style, int total_frames);

    /// After each finished frame; `what` names it for the plain lines ("shot.0001.exr -> ...").
    void frame_done(const std::string& what);
    /// Ends the bar's line before any other output (an error, the summary).
    void interrupt();
    /// The closing line: frames, seconds, frames per second.
    void finish();

private:
    double elapsed() const;

    std::ostream& out;
    progress_style report_style;
    int total_frames;
    int frames_done = 0;
    bool bar_open = false;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

}  // namespace vl1::render_tool
