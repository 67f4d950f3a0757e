// A pixel buffer shared between threads by shared_ptr<image>. It has no lock of its own:
// whoever shares one must hold the lock that guards it.
#pragma once

#include <cstdint>
#include <exception>

#include "framework/argb_float.h"

namespace vl1 {

/// How the pixels of an image are stored. Formats 0 and 1 keep their stored channel order;
/// 4 to 6 are r, g, b, a and get rotated into a, r, g, b when read.
enum class pixel_format : uint32_t {
    argb8 = 0,       // 4 bytes, each / 255 when read
    argb16 = 1,      // 8 bytes, each 16-bit word / 32767 when read
    argb16_alt = 2,  // as argb16
    argb_f32 = 3,    // 16 bytes, argb_float, read unchanged
    rgba8 = 4,       // 4 bytes, rotated, not divided
    rgba16 = 5,      // 8 bytes, rotated, not divided
    rgba_f32 = 6,    // 16 bytes, rotated
    empty = 0xffffffffu,
};

/// Bytes per pixel of `format`; 0 for an unknown format.
uint32_t bytes_per_pixel(pixel_format format) noexcept;

class image {
public:
    uint8_t* data = nullptr;  // first byte of storage row 0
    uint64_t width = 0;       // pixels per row
    uint64_t height = 0;      // rows
    uint64_t stride = 0;      // bytes from one storage row to the next
    pixel_format format = pixel_format::empty;
    uint32_t flipped = 0;     // non-zero: logical row y is storage row height - 1 - y
    bool owns_data = false;   // freed on destruction, only for a format below 7

    image() = default;
    /// A zero-filled image that owns its storage, stride = width * bytes per pixel.
    image(uint64_t width, uint64_t height, pixel_format format, bool flipped);
    ~image();

    image(const image&) = delete;
    image& operator=(const image&) = delete;
    /// Moving hands the storage, and its ownership, to the new image; the source ends empty.
    image(image&& other) noexcept;
    image& operator=(image&& other) noexcept;

    /// An image over storage that someone else owns and frees.
    static image wrap(uint8_t* data, uint64_t width, uint64_t height, uint64_t stride,
                      pixel_format format, bool flipped) noexcept;

    /// Makes this image a copy of `src`. Storage is reused only when this image already owns
    /// storage other than src's with src's width, height and format; otherwise it is freed
    /// and allocated anew, zero-filled, with stride = width * bytes per pixel. Rows are copied
    /// in parallel, logical row to logical row, `stride` bytes of this image each.
    void copy_from(const image& src);

    /// First byte of logical row y, taking `flipped` into account.
    uint8_t* row(uint64_t y) const noexcept;

    /// The pixel at logical (x, y) as a reader of this image's format yields it.
    /// The caller keeps x and y inside the image; an unknown format reads as all zero.
    argb_float read_pixel(uint64_t x, uint64_t y) const noexcept;

private:
    void release() noexcept;
    void allocate(uint64_t width, uint64_t height, pixel_format format);
};

/// Thrown and caught inside the render action only: a clip gave no image or the render
/// window is empty.
struct NoImageEx {};

}  // namespace vl1
