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

/// `source` (float RGBA) graded through `table` as the render path does it.
std::shared_ptr<ofxhost::image> graded(const ofxhost::image& source, const vl1::lut_argb<32>& table);

/// Largest difference of any channel of any pixel; 0 when every bit matches.
double max_difference(const ofxhost::image& a, const ofxhost::image& b);

/// A saved state as the effect writes it: parameters left to the host, then `theme`.
/// `extra` zero bytes are appended (a blob of another length than a multiple of three).
std::vector<uint8_t> state_blob_with(const vl1::hueloom_theme_v1& theme, std::size_t extra = 0);

/// Base64 text of a blob, as "binaryStateParam" holds it.
std::string state_text(const std::vector<uint8_t>& blob);

}  // namespace bundle_test
