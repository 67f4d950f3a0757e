// The RGBA pixel codec: how a pixel of 8-bit, 16-bit or float channels becomes the working
// colour and how the working colour is stored again. The render path, the editor's preview
// and the colour engine's row kernels all read and write pixels by this one rule; the
// vector forms of it (pixel_codec_simd.h) give the same bits.
//
// Reading (to 0..1):  8-bit   byte / 255.0f, at most 1.0
//                     16-bit  value / 32767.0f, at most 1.0 (the format's white is 32767;
//                             higher host values saturate)
//                     float   clamped to 0..1, NaN to +0.0 (-0.0 stays -0.0)
// Writing:            8-bit   value * 255.0 (in double, exact), rounded half away from zero
//                     16-bit  value * 32767.0 likewise
//                             both saturate to the storage range 0..255 / 0..65535 and
//                             store NaN as 0, so values outside 0..1 can't wrap
//                     float   as it is, unclamped
// Pixels are four channels in the order r, g, b, a, packed, at any alignment.
#pragma once

#include <cstddef>
#include <optional>

#include "framework/argb_float.h"

namespace vl1 {

/// Bits per channel of an RGBA pixel.
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

/// One pixel at `pixel` (rgba_pixel_bytes(depth) bytes) as the working colour.
argb_float read_rgba_pixel(rgba_depth depth, const void* pixel);

/// Stores `value` at `pixel` by the writing rule of `depth`.
void write_rgba_pixel(rgba_depth depth, void* pixel, const argb_float& value);

}  // namespace vl1
