// The frame every pass of hueloom-bench runs over: 4K of packed RGBA floats, as an OFX host
// hands them over, shaped like footage rather than noise.
#pragma once

#include <cstddef>
#include <vector>

#include "ofx/ofx_image_view.h"

namespace vl1::bench {

/// Packed RGBA float rows, r, g, b, a per pixel, as an OFX host hands them over.
struct rgba_float_frame {
    int width = 0;
    int height = 0;
    std::vector<float> pixels;  // width * height * 4

    std::size_t pixel_count() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    std::size_t byte_count() const { return pixels.size() * sizeof(float); }
};

/// A frame shaped like footage rather than noise: smooth colour fields with grain, a few
/// highlights above 1.0 and shadows below 0.0 (which the render path clips), alpha varying.
/// The same size always gives the same values.
rgba_float_frame make_source_frame(int width, int height);

/// A frame of the same size, zero-filled, for results.
rgba_float_frame make_blank_frame(const rgba_float_frame& like);

/// The frame as the adapter's row loop sees an OFX image of depth 32.
ofx_image_view float_image_view(rgba_float_frame& frame);

}  // namespace vl1::bench
