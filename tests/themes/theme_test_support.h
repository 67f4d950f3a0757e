// Building themes, theme files and import folders for the theme library's tests. Theme file
// bytes are put together here field by field, independently of the library's writer.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "color/hueloom_theme_v1.h"
#include "tests/support/test_files.h"

namespace vl1::test {

/// A table whose every cell differs in red, green and blue from its neighbours and from
/// tables of another `seed`; alpha 0.25, which no theme file keeps.
inline std::shared_ptr<const lut_argb<32>> seeded_lut(float seed)
{
    auto lut = std::make_shared<lut_argb<32>>();
    for (std::size_t i = 0; i < lut->data.size(); ++i) {
        const float step = static_cast<float>(i) / 32768.0f;
        lut->data[i] = argb_float{0.25f, step + seed, 1.0f - step + seed, step * 0.5f - seed};
    }
    return lut;
}

/// A theme of uid 0x0a1b2c3d, version 7, with wheel LUTs at `rotations` (seeded 1, 2, ...)
/// and, if asked, a post-processing LUT (seed 99).
inline hueloom_theme_v1 sample_theme(std::vector<float> rotations, bool with_post_processing)
{
    hueloom_theme_v1 theme;
    theme.uid = 0x0a1b2c3d;
    theme.version = 7;
    theme.name = "Dusk \xC3\xA4 {0}";
    theme.background_data = {0x89, 'P', 'N', 'G', 0, 1, 2, 0xff};
    float seed = 1.0f;
    for (const float rotation : rotations)
        theme.luts.push_back({seeded_lut(seed++), rotation});
    if (with_post_processing)
        theme.post_processing_lut = seeded_lut(99.0f);
    return theme;
}

/// Red, green and blue of every cell equal, and alpha 1.0 in `actual`.
inline void expect_same_table(const lut_argb<32>& actual, const lut_argb<32>& expected)
{
    ASSERT_EQ(actual.data.size(), expected.data.size());
    for (std::size_t i = 0; i < actual.data.size(); ++i) {
        const argb_float& a = actual.data[i];
        const argb_float& e = expected.data[i];
        if (a.r != e.r || a.g != e.g || a.b != e.b || a.a != 1.0f) {
            ADD_FAILURE() << "cell " << i << ": (" << a.a << ", " << a.r << ", " << a.g << ", " << a.b
                          << ") instead of (1, " << e.r << ", " << e.g << ", " << e.b << ")";
            return;
        }
    }
}

/// Rotations and tables of every wheel slot and the post-processing table as in `expected`.
inline void expect_same_luts(const hueloom_theme_v1& actual, const hueloom_theme_v1& expected)
{
    ASSERT_EQ(actual.luts.size(), expected.luts.size());
    for (std::size_t i = 0; i < actual.luts.size(); ++i) {
        EXPECT_EQ(actual.luts[i].rotation, expected.luts[i].rotation) << "slot " << i;
        expect_same_table(*actual.luts[i].lut, *expected.luts[i].lut);
    }
    ASSERT_EQ(actual.post_processing_lut != nullptr, expected.post_processing_lut != nullptr);
    if (expected.post_processing_lut)
        expect_same_table(*actual.post_processing_lut, *expected.post_processing_lut);
}

/// Little-endian bytes of a theme file, appended field by field (the test machine is
/// little-endian, as the files are).
struct file_bytes {
    std::vector<uint8_t> bytes;

    template <typename T>
    file_bytes& put(T value)
    {
        uint8_t raw[sizeof(T)];
        std::memcpy(raw, &value, sizeof(T));
        bytes.insert(bytes.end(), raw, raw + sizeof(T));
        return *this;
    }
    file_bytes& u16(uint16_t value) { return put(value); }
    file_bytes& u32(uint32_t value) { return put(value); }
    file_bytes& f32(float value) { return put(value); }
    file_bytes& raw(const std::string& text)
    {
        bytes.insert(bytes.end(), text.begin(), text.end());
        return *this;
    }
    /// One slot: angle, edge 32, zero padding, and the table of `lut` (zeros if null).
    file_bytes& slot(float angle, const lut_argb<32>* lut)
    {
        f32(angle).u16(32).u16(0);
        for (std::size_t i = 0; i < 32768; ++i)
            f32(lut ? lut->data[i].r : 0.0f).f32(lut ? lut->data[i].g : 0.0f).f32(lut ? lut->data[i].b : 0.0f);
        return *this;
    }
};

/// Header of a theme file up to and including the name, in `format_version`'s layout.
inline file_bytes file_header(uint32_t format_version, uint32_t theme_version, uint32_t uid,
                              const std::string& background, const std::string& name)
{
    file_bytes file;
    file.u32(0x686C7431).u32(format_version);
    if (format_version != 1)
        file.u32(theme_version);
    file.u32(uid).u32(static_cast<uint32_t>(background.size())).raw(background);
    file.u16(static_cast<uint16_t>(name.size())).raw(name);
    return file;
}

/// A .cube file of edge 2 whose red output is `red` everywhere; distinct per value.
inline std::string cube_text(float red)
{
    std::string text = "LUT_3D_SIZE 2\n";
    for (int i = 0; i < 8; ++i)
        text += fmt::format("{} {} {}\n", red, (i >> 1) & 1, (i >> 2) & 1);
    return text;
}

}  // namespace vl1::test
