// A host-side RGBA image of 8-bit, 16-bit or float channels, the way a host hands it to a
// plug-in: bounds in pixels (x2, y2 exclusive), a data pointer at the first pixel of row y1,
// and a row stride in bytes that may be padded or negative. With a negative stride the image
// is stored bottom-up: data points at row y1, which is the last row in memory, and each
// following row lies |row_bytes| lower.
#pragma once

#include "host/pixel_storage.h"
#include "ofx/api/ofx_core.h"

#include <array>
#include <optional>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vl1::ofxhost {

enum class pixel_depth { byte, short_int, real };  // 8-bit, 16-bit unsigned, 32-bit float

/// "OfxBitDepthByte" and so on.
const char* depth_name(pixel_depth depth);
/// Bytes of one channel: 1, 2 or 4.
int channel_bytes(pixel_depth depth);

struct image_layout {
    int row_padding_bytes = 0;  // added after each row's pixels
    bool bottom_up = false;     // negative row bytes
};

class image {
public:
    /// Throws host_error for empty bounds or a negative padding.
    image(pixel_depth depth, OfxRectI bounds, image_layout layout = {});

    pixel_depth depth() const { return channel_depth; }
    OfxRectI bounds() const { return pixel_bounds; }
    int width() const { return pixel_bounds.x2 - pixel_bounds.x1; }
    int height() const { return pixel_bounds.y2 - pixel_bounds.y1; }
    int row_bytes() const { return bytes_per_row; }
    int pixel_bytes() const { return 4 * channel_bytes(channel_depth); }
    void* data() { return base() + first_row_offset; }

    // Metadata carried into the image's property set.
    std::string premultiplication = "OfxImageAlphaPremultiplied";
    std::string field = "OfxFieldNone";
    std::string unique_id;

    /// What a broken host may claim instead of the truth, for tests that play one: the
    /// image's property set then says this, whatever the storage holds.
    struct lies {
        bool null_data = false;
        std::optional<std::string> pixel_depth;
        std::optional<int> row_bytes;
        std::optional<OfxRectI> bounds;
    } claims;
    double pixel_aspect_ratio = 1.0;

    /// The address of pixel (x, y) in bounds coordinates; throws host_error outside the bounds.
    void* pixel_address(int x, int y);
    /// A channel (0 r, 1 g, 2 b, 3 a) in its stored units: 0..255, 0..65535 or the float.
    double channel(int x, int y, int c) const;
    void set_channel(int x, int y, int c, double value);
    std::array<double, 4> pixel(int x, int y) const;
    void set_pixel(int x, int y, std::array<double, 4> rgba);
    void fill(std::array<double, 4> rgba);

    /// The padding bytes of every row, in memory order, so tests can see whether a plug-in
    /// wrote past the pixels.
    std::vector<std::uint8_t> padding_bytes() const;
    /// Sets every byte of the buffer, padding included.
    void fill_bytes(std::uint8_t value);
    /// Copies the pixels of `from` that lie inside these bounds; both of one depth.
    void copy_pixels_from(const image& from);

private:
    std::uint8_t* base() { return storage.data(); }
    const std::uint8_t* address(int x, int y) const;

    pixel_depth channel_depth;
    OfxRectI pixel_bounds;
    int bytes_per_row;
    std::ptrdiff_t first_row_offset;
    pixel_storage storage;
};

/// Bounds of an image of `full` bounds rendered at `scale` (proxy mode): scaled, widened to
/// whole pixels.
OfxRectI scaled_bounds(OfxRectI full, double scale);

}  // namespace vl1::ofxhost
