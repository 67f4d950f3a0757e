// File names of image sequences: a path with one frame-number token, either a run of '#'
// (as many digits as there are '#') or a printf-style %d / %0Nd, and the frame lists of
// --frames.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vl1::render_tool {

class frame_pattern {
public:
    /// Reads `path`; throws render_error (usage) when it holds more than one token or a '%'
    /// that isn't %d, %0Nd or %%.
    explicit frame_pattern(const std::string& path);

    /// Whether the path names a frame number at all; a path without a token is a still.
    bool has_frame() const { return has_frame_number; }
    /// The path of a frame, zero-padded to the token's width; the path itself for a still.
    std::string path_for(int frame) const;
    /// The frames whose files exist, ascending; empty for a still or a missing folder.
    std::vector<int> existing_frames() const;

private:
    std::string prefix;
    std::string suffix;
    int digit_width = 0;
    bool has_frame_number = false;
};

/// Largest frame number and largest number of frames that --frames accepts.
inline constexpr int max_frame_number = 99999999;
inline constexpr int max_frame_count = 1000000;

/// "7", "1-100", "1-100x5", "1,4,10-12": frames in the order given, repeats dropped. Throws
/// render_error (usage) naming the bad part.
std::vector<int> parse_frame_list(const std::string& text);

}  // namespace vl1::render_tool
