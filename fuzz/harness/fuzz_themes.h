// Small themes that the bodies and the seed catalogue build: a theme a caller already holds
// before a read, the theme placed in the collection, and themes to write as seeds.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "color/hueloom_theme_v1.h"

namespace vl1::fuzz {

/// A table that differs from the identity by `shift` in red and by -shift in blue, so the
/// tables of different shifts differ in every cell.
std::shared_ptr<const lut_argb<32>> shifted_lut(float shift);

/// A theme of `wheel_luts` LUTs spread evenly from 0 degrees, a background of a few bytes
/// and, if asked, a post-processing LUT.
hueloom_theme_v1 sample_theme(uint32_t uid, const std::string& name, std::size_t wheel_luts, bool post_processing);

/// What a caller holds before a read that must leave it alone when it refuses the input.
const hueloom_theme_v1& theme_held_before_read();

}  // namespace vl1::fuzz
