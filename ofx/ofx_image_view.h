// An OFX image as the render path sees it: depth, bounds, first pixel and row stride, read
// afresh from the image's property set at each render.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "ofx/ofx_suites.h"

namespace vl1 {

/// An image whose properties contradict each other (rows shorter than the bounds say).
struct bad_image_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct ofx_image_view {
    int depth = 0;  // bits per channel: 8, 16 or 32; 0 for anything else
    OfxRectI bounds{0, 0, 0, 0};
    uint8_t* data = nullptr;
    /// Bytes from one row to the next. Hosts pad rows, and some hand over bottom-up images
    /// with a negative stride; `data` is always the first pixel of row bounds.y1.
    std::ptrdiff_t row_bytes = 0;

    int bytes_per_pixel() const { return depth / 2; }  // four channels of depth / 8 bytes
    bool contains(int x, int y) const
    {
        return y >= bounds.y1 && y < bounds.y2 && x >= bounds.x1 && x < bounds.x2;
    }
    uint8_t* pixel(int x, int y) const
    {
        return data + std::ptrdiff_t(y - bounds.y1) * row_bytes + std::ptrdiff_t(x - bounds.x1) * bytes_per_pixel();
    }
};

/// 8 for "OfxBitDepthByte", 16 for "OfxBitDepthShort", 32 for "OfxBitDepthFloat", else 0.
int depth_from_text(const char* text);

/// Reads the image's description. A missing "OfxImagePropRowBytes" means packed rows.
/// Throws bad_image_error when the rows can't hold the bounds' width.
ofx_image_view read_image_view(const OfxPropertySuiteV1& props, OfxPropertySetHandle image);

}  // namespace vl1
