// Small theme folders for the tests, written the way a theme author writes them, and the
// comparison of the themes made from them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "color/hueloom_theme_v1.h"
#include "tests/support/test_files.h"

namespace hueloom_test {

/// An edge-2 .cube file: the identity, but red starts at `red_shift` instead of 0, so mid
/// grey gets red 0.5 + red_shift / 2.
void write_shifted_cube(const std::filesystem::path& path, float red_shift);

/// The PNG signature and an IHDR chunk for `width` x `height`, big-endian as PNG has it,
/// followed by a few bytes: enough for anything that reads the header only.
std::string png_header(uint32_t width, uint32_t height);

struct theme_folder_options {
    std::string name = "Test Theme";
    int version = 1;
    /// Empty: no "uid" key.
    std::string uid = "00abcdef";
    std::string background = png_header(64, 48);
    bool post_processing = false;
};

/// A folder below the test's HOME with theme.json, two LUTs ("a.cube" at 30, "b.cube" at
/// 200, red shifted by 0.1 and 0.2), "p.cube" (red shifted by 0.05) when post-processing is
/// on, and "wheel.png" holding `background`.
std::filesystem::path make_theme_folder(const theme_folder_options& options = {});

/// Name, uid, versions, background, rotations, tables and post-processing of `a` and `b` agree.
void expect_same_theme(const vl1::hueloom_theme_v1& a, const vl1::hueloom_theme_v1& b);

}  // namespace hueloom_test
