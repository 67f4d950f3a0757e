// Conversion of one RGBA pixel of an OFX image to the working colour and back.
#pragma once

#include <cstdint>

#include "framework/argb_float.h"

namespace vl1 {

/// 8-bit: byte / 255, 16-bit: value / 32767 (the scale is 32767, so a host's value above it
/// saturates), each at most 1.0; float: clamped to 0..1, NaN to 0. Any other depth gives zero.
argb_float read_pixel(int depth, const uint8_t* pixel);

/// 8-bit: value * 255, 16-bit: value * 32767, rounded half away from zero and saturated to the
/// storage range (NaN stores 0); float as it is. Any other depth writes nothing.
void write_pixel(int depth, uint8_t* pixel, const argb_float& value);

}  // namespace vl1
