// What the bundle's pixels should be, worked out with the colour engine directly: the table
// a theme gives at given parameter values, and a source image sent through it by the render
// path's conversion rules.
#pragma once

#include "color/hueloom_theme_v1.h"
#include "host/image.h"
#include "tests/support/theme_looks.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace bundle_test {

using hueloom_test::builtin_theme;
using hueloom_test::look;
using hueloom_test::table_for;
using hueloom_test::travelling_theme;

/// `source` graded through `table` as the render path does it, into an image of
/// `output_depth` (the source's own by default): 8 and 16 bits read as value / 255 and
/// value / 32767, at most 1; floats clamped to 0..1, NaN as 0; written back with the same
/// scales, rounded half away from zero and saturated, floats as they are.
std::shared_ptr<vl1::ofxhost::image> graded(const vl1::ofxhost::image& source, const vl1::lut_argb<32>& table);
std::shared_ptr<vl1::ofxhost::image> graded(const vl1::ofxhost::image& source, const vl1::lut_argb<32>& table,
                                       vl1::ofxhost::pixel_depth output_depth);

/// Largest difference of any channel of any pixel; 0 when every bit matches.
double max_difference(const vl1::ofxhost::image& a, const vl1::ofxhost::image& b);

/// A saved state as the effect writes it: parameters left to the host, then `theme`.
/// `extra` zero bytes are appended (a blob of another length than a multiple of three).
std::vector<uint8_t> state_blob_with(const vl1::hueloom_theme_v1& theme, std::size_t extra = 0);

/// Base64 text of a blob, as "binaryStateParam" held it before the state was packed.
std::string state_text(const std::vector<uint8_t>& blob);

}  // namespace bundle_test
