// Building themes, theme files and import folders for the theme library's tests. Theme file
// bytes are put together here field by field, independently of the library's writer.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "color/hueloom_theme_v1.h"

namespace vl1::test {

/// A table whose every cell differs in red, green and blue from its neighbours and from
/// tables of another `seed`; alpha 0.25, which no theme file keeps.
std::shared_ptr<const lut_argb<32>> seeded_lut(float seed);

/// A theme of uid 0x0a1b2c3d, version 7, with wheel LUTs at `rotations` (seeded 1, 2, ...)
/// and, if asked, a post-processing LUT (seed 99).
hueloom_theme_v1 sample_theme(std::vector<float> rotations, bool with_post_processing);

/// Red, green and blue of every cell equal, and alpha 1.0 in `actual`.
void expect_same_table(const lut_argb<32>& actual, const lut_argb<32>& expected);

/// Little-endian bytes of a theme file, appended field by field.
struct file_bytes {
    std::vector<uint8_t> bytes;

    file_bytes& u16(uint16_t value);
    file_bytes& u32(uint32_t value);
    file_bytes& f32(float value);
    file_bytes& raw(const std::string& text);
    /// One slot: angle, edge 32, zero padding, and the table of `lut` (zeros if null).
    file_bytes& slot(float angle, const lut_argb<32>* lut);
};

/// Header of a theme file up to and including the name, in `format_version`'s layout.
file_bytes file_header(uint32_t format_version, uint32_t theme_version, uint32_t uid, const std::string& background,
                       const std::string& name);

void write_bytes(const std::filesystem::path& path, const std::vector<uint8_t>& bytes);
void write_text(const std::filesystem::path& path, const std::string& text);
std::vector<uint8_t> read_bytes(const std::filesystem::path& path);

/// A .cube file of edge 2 whose red output is `red` everywhere; distinct per value.
std::string cube_text(float red);

}  // namespace vl1::test
