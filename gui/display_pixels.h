// The preview picture turned into the words the editor draws: free of the toolkit, so the
// benchmark can time the very conversion the editor runs on every picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "framework/image.h"

namespace vl1::gui {

struct display_size {
    std::size_t width = 0, height = 0;
};

/// Converts `picture` (any pixel format, top row first) to xRGB words, 8 bits a channel,
/// truncated after clamping to 0..1 (NaN as 0); rows in parallel. With a `reduction` k above
/// 1 each word is the mean of a k x k box of the picture (fewer pixels at its right and
/// bottom edges): a picture shown at a k-th of its size or less is converted only as far as
/// the screen can show it. The size of what `out` now holds.
display_size convert_to_display(const vl1::image& picture, std::vector<uint32_t>& out, int reduction = 1);

}  // namespace vl1::gui
