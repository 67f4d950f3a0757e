#include "host/image.h"

#include "host/status.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace vl1::ofxhost {

const char* depth_name(pixel_depth depth)
{
    switch (depth) {
    case pixel_depth::byte: return "OfxBitDepthByte";
    case pixel_depth::short_int: return "OfxBitDepthShort";
    case pixel_depth::real: return "OfxBitDepthFloat";
    }
    return "OfxBitDepthNone";
}

int channel_bytes(pixel_depth depth)
{
    switch (depth) {
    case pixel_depth::byte: return 1;
    case pixel_depth::short_int: return 2;
    case pixel_depth::real: return 4;
    }
    return 0;
}

image::image(pixel_depth depth, OfxRectI bounds, image_layout layout) : channel_depth(depth), pixel_bounds(bounds)
{
    if (bounds.x2 <= bounds.x1 || bounds.y2 <= bounds.y1)
        throw host_error("image bounds are empty");
    if (layout.row_padding_bytes < 0)
        throw host_error("row padding is negative");
    const long long stride = static_cast<long long>(width()) * pixel_bytes() + layout.row_padding_bytes;
    const long long total = stride * height();
    if (total > (1LL << 31))
        throw host_error("image is larger than 2 GiB");
    bytes_per_row = static_cast<int>(layout.bottom_up ? -stride : stride);
    first_row_offset = layout.bottom_up ? static_cast<std::ptrdiff_t>(stride * (height() - 1)) : 0;
    storage = pixel_storage(static_cast<std::size_t>(total));
}

const std::uint8_t* image::address(int x, int y) const
{
    if (x < pixel_bounds.x1 || x >= pixel_bounds.x2 || y < pixel_bounds.y1 || y >= pixel_bounds.y2) {
        throw host_error("pixel (" + std::to_string(x) + ", " + std::to_string(y) + ") is outside the image");
    }
    return storage.data() + first_row_offset + static_cast<std::ptrdiff_t>(y - pixel_bounds.y1) * bytes_per_row +
           static_cast<std::ptrdiff_t>(x - pixel_bounds.x1) * pixel_bytes();
}

void* image::pixel_address(int x, int y) { return const_cast<std::uint8_t*>(address(x, y)); }

double image::channel(int x, int y, int c) const
{
    const std::uint8_t* p = address(x, y) + c * channel_bytes(channel_depth);
    switch (channel_depth) {
    case pixel_depth::byte: return *p;
    case pixel_depth::short_int: {
        std::uint16_t v;
        std::memcpy(&v, p, sizeof v);
        return v;
    }
    case pixel_depth::real: {
        float v;
        std::memcpy(&v, p, sizeof v);
        return v;
    }
    }
    return 0.0;
}

void image::set_channel(int x, int y, int c, double value)
{
    auto* p = const_cast<std::uint8_t*>(address(x, y)) + c * channel_bytes(channel_depth);
    switch (channel_depth) {
    case pixel_depth::byte: *p = static_cast<std::uint8_t>(value); break;
    case pixel_depth::short_int: {
        const auto v = static_cast<std::uint16_t>(value);
        std::memcpy(p, &v, sizeof v);
        break;
    }
    case pixel_depth::real: {
        const auto v = static_cast<float>(value);
        std::memcpy(p, &v, sizeof v);
        break;
    }
    }
}

std::array<double, 4> image::pixel(int x, int y) const
{
    return {channel(x, y, 0), channel(x, y, 1), channel(x, y, 2), channel(x, y, 3)};
}

void image::set_pixel(int x, int y, std::array<double, 4> rgba)
{
    for (int c = 0; c < 4; ++c)
        set_channel(x, y, c, rgba[c]);
}

void image::fill(std::array<double, 4> rgba)
{
    for (int y = pixel_bounds.y1; y < pixel_bounds.y2; ++y) {
        for (int x = pixel_bounds.x1; x < pixel_bounds.x2; ++x)
            set_pixel(x, y, rgba);
    }
}

std::vector<std::uint8_t> image::padding_bytes() const
{
    const std::size_t stride = static_cast<std::size_t>(std::abs(bytes_per_row));
    const std::size_t used = static_cast<std::size_t>(width()) * pixel_bytes();
    std::vector<std::uint8_t> out;
    for (std::size_t row = 0; row < static_cast<std::size_t>(height()); ++row) {
        const auto* start = storage.data() + row * stride;
        out.insert(out.end(), start + used, start + stride);
    }
    return out;
}

void image::fill_bytes(std::uint8_t value) { std::memset(storage.data(), value, storage.size()); }

void image::copy_pixels_from(const image& from)
{
    if (from.channel_depth != channel_depth)
        throw host_error("copying pixels between images of different depths");
    const OfxRectI a = pixel_bounds, b = from.pixel_bounds;
    for (int y = std::max(a.y1, b.y1); y < std::min(a.y2, b.y2); ++y) {
        for (int x = std::max(a.x1, b.x1); x < std::min(a.x2, b.x2); ++x)
            std::memcpy(pixel_address(x, y), from.address(x, y), static_cast<std::size_t>(pixel_bytes()));
    }
}

OfxRectI scaled_bounds(OfxRectI full, double scale)
{
    return {static_cast<int>(std::floor(full.x1 * scale)), static_cast<int>(std::floor(full.y1 * scale)),
            static_cast<int>(std::ceil(full.x2 * scale)), static_cast<int>(std::ceil(full.y2 * scale))};
}

}  // namespace vl1::ofxhost
