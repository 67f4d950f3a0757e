// Rows of RGBA pixels through a table of edge 32: the render path's inner loop, free of any
// host or toolkit type. Pixels are four channels in the order r, g, b, a, packed.
//
// Reading (to 0..1):  8-bit   byte / 255.0, at most 1.0
//                     16-bit  value / 32767.0, at most 1.0 (the format's white is 32767;
//                             higher host values saturate)
//                     float   clamped to 0..1, NaN to 0.0 (-0.0 stays -0.0)
// Sampling:           exactly sample_lut, so the result keeps the pixel's alpha.
// Writing:            8-bit   value * 255.0 (in double, exact), rounded half away from zero
//                     16-bit  value * 32767.0 likewise
//                             both saturate to the storage range 0..255 / 0..65535 and
//                             store NaN as 0, so a table holding values outside 0..1
//                             can't wrap
//                     float   as it is, unclamped
//
// Every path gives the same bits as the per-pixel functions below.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "color/lut_argb.h"

namespace vl1 {

/// Bits per channel of an RGBA row.
enum class rgba_depth { u8 = 8, u16 = 16, f32 = 32 };

/// The depth of `bits` per channel: 8, 16 or 32; empty for any other number.
constexpr std::optional<rgba_depth> rgba_depth_from_bits(int bits)
{
    switch (bits) {
    case 8: return rgba_depth::u8;
    case 16: return rgba_depth::u16;
    case 32: return rgba_depth::f32;
    default: return std::nullopt;
    }
}

/// Bytes of one RGBA pixel of `depth`: 4, 8 or 16.
constexpr std::size_t rgba_pixel_bytes(rgba_depth depth)
{
    return static_cast<std::size_t>(depth) / 2;
}

/// One pixel at `pixel` (rgba_pixel_bytes(depth) bytes, any alignment) as argb_float.
argb_float read_rgba_pixel(rgba_depth depth, const void* pixel);

/// Stores `value` at `pixel` by the writing rule of `depth`.
void write_rgba_pixel(rgba_depth depth, void* pixel, const argb_float& value);

enum class row_kernel_path {
    scalar,  // one channel at a time; always available
    sse2,    // one pixel per register; the scalar path where SSE2 is missing
};

/// The fastest path this build has.
row_kernel_path best_row_kernel_path();

/// Reads `count` pixels at `in`, samples each through `lut` and writes them to `out`.
/// `in` and `out` may be the same row when the depths are equal. Allocation-free; throws
/// std::out_of_range("vector") before touching a pixel if `lut` lost its 32768 entries.
void apply_lut_row(const lut_argb<32>& lut, rgba_depth in_depth, const void* in, rgba_depth out_depth, void* out,
                   std::size_t count, row_kernel_path path = best_row_kernel_path());

/// apply_lut_row with the depths in bits per channel (8, 16 or 32), the form in which a
/// component's row-wise face (framework/irow_processor.h) receives them. False, touching
/// nothing, for any other depth or a negative count.
bool apply_lut_row_bits(const lut_argb<32>& lut, int in_bits, const void* in, int out_bits, void* out, int count);

}  // namespace vl1
