// The pictures the editor's preview renders: the host's frame scaled down once by a box
// filter, and the proxy size at which a pass fits the time budget while the user drags.
#pragma once

#include <cstdint>
#include <memory>

#include "framework/image.h"
#include "ofx/ofx_image_view.h"

namespace vl1 {

/// Longest side of the full-size preview, whatever the frame's size.
inline constexpr int preview_full_limit = 3840;
/// What a pass should take while the user drags a control, in milliseconds.
inline constexpr double preview_pass_budget_ms = 60.0;

/// Source, result and display picture of one preview size. All three are r, g, b, a floats
/// in 0..1 (format rgba_f32), top row first, of the same size; result and display start as
/// copies of the source.
struct preview_images {
    std::shared_ptr<image> source, result, display;

    bool complete() const { return source && result && display; }
};

/// The size of a frame of `width` x `height` scaled so that its long side is at most
/// `limit`: the short side follows the aspect, truncated; never enlarged.
struct preview_size {
    uint64_t width = 0, height = 0;
};
preview_size scaled_size(uint64_t width, uint64_t height, int limit);

/// The frame, top row first, box-filtered to scaled_size(limit), values read as the render
/// path reads them and clamped to 0..1; rows run in parallel. Empty for an empty frame or
/// an unknown depth.
preview_images build_images(const ofx_image_view& frame, int limit);

/// The long side for proxy passes, from the time a full pass over a `width` x `height`
/// picture took: the smallest of the long side's repeated halves that isn't below the side
/// that fits the budget. 0 when the full pass fits the budget (the proxy is the full size).
int proxy_long_side(uint64_t width, uint64_t height, int64_t full_pass_ms);

}  // namespace vl1
