// Which files hueloom-render reads and writes for which frame, from -i, -o and --frames.
#pragma once

#include <string>
#include <vector>

namespace vl1::render_tool {

struct frame_job {
    int frame = 1;       // the OFX time of the render
    std::string input;
    std::string output;
};

/// The jobs in render order. A pattern input needs a pattern output; without --frames it
/// takes every frame found on disk. A still input renders at frame 1, or once per frame of
/// --frames into a pattern output. Throws render_error: (usage) for patterns and frame lists
/// that don't fit together, (input) when a pattern finds no frames.
std::vector<frame_job> plan_frames(const std::string& input, const std::string& output, const std::string& frames);

/// The frame a look is taken at when no image is rendered: the first of --frames, else 1.
int first_frame(const std::string& frames);

}  // namespace vl1::render_tool
