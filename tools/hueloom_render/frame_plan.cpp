#include "tools/hueloom_render/frame_plan.h"

#include "tools/hueloom_render/frame_pattern.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>

namespace vl1::render_tool {

std::vector<frame_job> plan_frames(const std::string& input, const std::string& output, const std::string& frames)
{
    const frame_pattern in(input);
    const frame_pattern out(output);
    if (in.has_frame() && !out.has_frame()) {
        throw render_error(exit_code::usage,
                           fmt::format("-o {} needs a frame number (#### or %04d) for the sequence {}", output, input));
    }
    std::vector<int> list;
    if (!frames.empty()) {
        list = parse_frame_list(frames);
    } else if (in.has_frame()) {
        list = in.existing_frames();
        if (list.empty()) {
            throw render_error(exit_code::input, fmt::format("no frames of {} found; --frames names them", input));
        }
    } else if (out.has_frame()) {
        throw render_error(exit_code::usage,
                           fmt::format("-o {} is a sequence but -i {} is one image: give --frames", output, input));
    } else {
        list = {1};
    }
    if (!out.has_frame() && list.size() > 1) {
        throw render_error(exit_code::usage,
                           fmt::format("--frames names {} frames but -o {} names one file", list.size(), output));
    }
    std::vector<frame_job> jobs;
    jobs.reserve(list.size());
    for (const int f : list) jobs.push_back({f, in.path_for(f), out.path_for(f)});
    return jobs;
}

int first_frame(const std::string& frames)
{
    return frames.empty() ? 1 : parse_frame_list(frames).front();
}

}  // namespace vl1::render_tool
