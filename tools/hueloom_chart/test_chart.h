// The test chart that shows what a look does: a smooth hue sweep, saturated primaries and
// secondaries, patches of several skin tones, a smooth grey ramp and grey steps, on a dark
// grey ground. Values are display-referred code values in 0..1 (sRGB-encoded), as the
// plug-in's tables take them.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace vl1::chart_tool {

/// RGB floats, three per pixel, rows from the top down.
struct chart_image {
    int width = 0;
    int height = 0;
    std::vector<float> rgb;

    const float* pixel(int x, int y) const { return rgb.data() + (static_cast<std::size_t>(y) * width + x) * 3; }
};

/// One solid patch: its pixels x1 <= x < x2, y1 <= y < y2 all have `colour`.
struct chart_patch {
    std::string name;
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    std::array<float, 3> colour{};
};

/// The band of the hue sweep and of the grey ramp, as rows and columns of the chart.
struct chart_band {
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

inline constexpr int min_chart_size = 64;
inline constexpr int max_chart_size = 16384;

/// The solid patches of a chart of this size: "red" .. "magenta", "skin 1" (lightest) ..
/// "skin 6", "grey 0" .. "grey 10" (0.0 to 1.0 in tenths).
std::vector<chart_patch> chart_patches(int width, int height);
/// The hue sweep: hue 0° at the left to 360° at the right, saturation 1 at the top falling
/// to 0.25 at the bottom, value 0.9.
chart_band hue_sweep_band(int width, int height);
/// The grey ramp: 0.0 at the left to 1.0 at the right.
chart_band grey_ramp_band(int width, int height);

/// The chart; sizes are clamped to min_chart_size..max_chart_size.
chart_image make_test_chart(int width, int height);

}  // namespace vl1::chart_tool
