// The pixels the renderer moves between files and the plug-in: 32-bit float RGBA, four
// channels per pixel in the order r, g, b, a, rows from the top of the picture down, packed.
#pragma once

#include <cstddef>
#include <vector>

namespace vl1::render_tool {

struct rgba_image {
    int width = 0;
    int height = 0;
    std::vector<float> pixels;  // width * height * 4

    rgba_image() = default;
    rgba_image(int w, int h) : width(w), height(h), pixels(static_cast<std::size_t>(w) * h * 4, 0.0f) {}

    float* pixel(int x, int y) { return pixels.data() + (static_cast<std::size_t>(y) * width + x) * 4; }
    const float* pixel(int x, int y) const { return pixels.data() + (static_cast<std::size_t>(y) * width + x) * 4; }
};

}  // namespace vl1::render_tool
