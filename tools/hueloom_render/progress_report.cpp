#include "tools/hueloom_render/progress_report.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <cmath>

namespace vl1::render_tool {

std::string duration_text(double seconds)
{
    const long total = std::lround(std::max(0.0, seconds));
    const long h = total / 3600, m = total / 60 % 60, s = total % 60;
    return h > 0 ? fmt::format("{}:{:02}:{:02}", h, m, s) : fmt::format("{}:{:02}", m, s);
}

std::string progress_bar_text(int done, int total, double seconds, int bar_width)
{
    const int filled = total > 0 ? static_cast<int>(static_cast<long long>(bar_width) * done / total) : bar_width;
    const std::string bar = std::string(filled, '#') + std::string(bar_width - filled, '-');
    const int digits = static_cast<int>(std::to_string(total).size());
    std::string text = fmt::format("[{}] {:>{}}/{}", bar, done, digits, total);
    if (done > 0 && seconds > 0.0) {
        const double fps = done / seconds;
        text += fmt::format("  {:.1f} fps  {} left", fps, duration_text((total - done) / fps));
    }
    return text;
}

progress_report::progress_report(std::ostream& err, progress_style style, int total_frames)
    : out(err), report_style(style), total_frames(total_frames)
{
}

double progress_report::elapsed() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void progress_report::frame_done(const std::string& what)
{
    ++frames_done;
    if (report_style == progress_style::bar) {
        fmt::print(out, "\r{}", progress_bar_text(frames_done, total_frames, elapsed()));
        out.flush();
        bar_open = true;
    } else if (report_style == progress_style::lines) {
        std::string line = fmt::format("hueloom-render: {}/{} {}", frames_done, total_frames, what);
        if (total_frames > 1) {
            const double fps = frames_done / std::max(elapsed(), 1e-6);
            line += fmt::format("  {:.1f} fps, {} left", fps, duration_text((total_frames - frames_done) / fps));
        }
        fmt::print(out, "{}\n", line);
    }
}

void progress_report::interrupt()
{
    if (bar_open)
        fmt::print(out, "\n");
    bar_open = false;
}

void progress_report::finish()
{
    interrupt();
    if (report_style == progress_style::quiet || total_frames < 2)
        return;
    const double seconds = elapsed();
    fmt::print(out, "hueloom-render: {} frames in {:.1f} s ({:.1f} fps)\n", frames_done, seconds,
               frames_done / std::max(seconds, 1e-6));
}

}  // namespace vl1::render_tool
