// Shared pieces of the renderer's tests: running the built command as a process, writing
// source images of any depth, reading results, and the rule per pixel that results are
// compared with.
#pragma once

#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "color/lut_argb.h"
#include "tests/support/test_files.h"
#include "tests/tools/run_process.h"

namespace render_test {

using run_result = hueloom_test::process_result;

/// Runs hueloom-render, or hueloom-chart, with these arguments as a process; its standard
/// error is a file, so never a terminal.
run_result run_render(const std::vector<std::string>& args);
run_result run_chart(const std::vector<std::string>& args);

/// The folder of the host's fixture bundle, and the arguments that make the renderer use it.
std::filesystem::path fixture_dir();
std::vector<std::string> fixture_plugin_args();
/// Arguments that make the renderer use the build's Hueloom bundle and nothing else.
std::vector<std::string> hueloom_plugin_args();

/// Pixels as float, `channels` per pixel, rows from the top.
struct pixels {
    int width = 0;
    int height = 0;
    int channels = 0;
    OIIO::TypeDesc format;  // as stored in the file
    std::vector<float> values;
    OIIO::ImageSpec header;

    const float* at(int x, int y) const { return values.data() + (static_cast<std::size_t>(y) * width + x) * channels; }
};

/// Writes a test image whose channel c at (x, y) differs with x, y and c, in a way no
/// swap of axes or channels keeps. `hdr` spreads the values over -0.3 .. 1.3 instead of 0 .. 1;
/// with alpha, some pixels have alpha 0 and some alpha 1. Extra attributes go into the file,
/// as integers when they are whole numbers.
void write_pattern(const std::filesystem::path& path, int width, int height, int channels, OIIO::TypeDesc format,
                   bool hdr = false, const std::vector<std::pair<std::string, std::string>>& attributes = {});
/// Reads a file's stored values; alpha is not multiplied into colour. Throws on failure.
pixels read_pixels(const std::filesystem::path& path);

/// What the renderer should make of one source pixel, RGBA in 0..1 steps of the file.
using pixel_rule = std::function<std::array<float, 4>(std::array<float, 4>)>;
/// The bundle without a look: the plug-in clamps what it reads to 0..1 (NaN to 0) and the
/// table is the identity.
pixel_rule identity_look();
/// What the render path makes of a pixel through `table`: the clamped colour sampled through
/// it, alpha as it was.
pixel_rule table_look(std::shared_ptr<const vl1::lut_argb<32>> table);
/// The build's bundle with nothing graded, and the arguments that ask for it: with the effect's
/// hidden "Global Bypass" on, the plug-in answers that it is the identity and the source passes
/// through untouched.
struct look_case {
    std::vector<std::string> args;
    pixel_rule rule;
};
const look_case& neutral_look();
/// The colour-inverting fixture plug-in with "Invert" on: 1 - c for r, g, b, alpha kept.
pixel_rule inverted_look();

/// Compares `result` with `rule` applied to `source`, pixel by pixel, allowing half a step of
/// the result's stored depth; a failure names the first differing pixel and channel.
::testing::AssertionResult matches_rule(const pixels& source, const pixels& result, const pixel_rule& rule);

/// `a` followed by `b`.
std::vector<std::string> joined(std::vector<std::string> a, const std::vector<std::string>& b);
using hueloom_test::contains;
using hueloom_test::folder_names;
/// Number of lines in a text (a last line without '\n' counts).
int line_count(const std::string& text);

}  // namespace render_test
