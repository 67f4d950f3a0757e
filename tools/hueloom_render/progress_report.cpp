#include "tools/hueloom_render/progress_report.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <cmath>

namespace hueloom_render {

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
    : err_(err), style_(style), total_(total_frames)
{
}

double progress_report::elapsed() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void progress_report::frame_done(const std::string& what)
{
    ++done_;
    if (style_ == progress_style::bar) {
        fmt::print(err_, "\r{}", progress_bar_text(done_, total_, elapsed()));
        err_.flush();
        bar_open_ = true;
    } else if (style_ == progress_style::lines) {
        std::string line = fmt::format("hueloom-render: {}/{} {}", done_, total_, what);
        if (total_ > 1) {
            const double fps = done_ / std::max(elapsed(), 1e-6);
            line += fmt::format("  {:.1f} fps, {} left", fps, duration_text((total_ - done_) / fps));
        }
        fmt::print(err_, "{}\n", line);
    }
}

void progress_report::interrupt()
{
    if (bar_open_) fmt::print(err_, "\n");
    bar_open_ = false;
}

void progress_report::finish()
{
    interrupt();
    if (style_ == progress_style::quiet || total_ < 2) return;
    const double seconds = elapsed();
    fmt::print(err_, "hueloom-render: {} frames in {:.1f} s ({:.1f} fps)\n", done_, seconds,
               done_ / std::max(seconds, 1e-6));
}

}  // namespace hueloom_render
