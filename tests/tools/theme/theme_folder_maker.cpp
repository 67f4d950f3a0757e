#include "tests/tools/theme/theme_folder_maker.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include "tests/support/test_paths.h"

namespace hueloom_test {

void write_shifted_cube(const std::filesystem::path& path, float red_shift)
{
    std::string text = "LUT_3D_SIZE 2\n";
    for (int b = 0; b < 2; ++b)
        for (int g = 0; g < 2; ++g)
            for (int r = 0; r < 2; ++r)
                text += fmt::format("{} {} {}\n", r == 0 ? red_shift : 1.0f, g, b);
    write_file(path, text);
}

std::string png_header(uint32_t width, uint32_t height)
{
    std::string bytes = "\x89PNG\r\n\x1a\n";
    bytes += std::string("\0\0\0\x0d", 4) + "IHDR";
    for (uint32_t value : {width, height})
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>((value >> shift) & 0xFF);
    bytes += std::string("\x08\x06\0\0\0", 5);
    return bytes;
}

std::filesystem::path make_theme_folder(const theme_folder_options& options)
{
    const std::filesystem::path folder = make_temp_dir("theme-folder");
    write_shifted_cube(folder / "a.cube", 0.1f);
    write_shifted_cube(folder / "b.cube", 0.2f);
    write_file(folder / "wheel.png", options.background);
    std::string json = fmt::format("{{\n  \"name\": \"{}\",\n  \"version\": {},\n", options.name, options.version);
    if (!options.uid.empty())
        json += fmt::format("  \"uid\": \"{}\",\n", options.uid);
    json += "  \"wheel\": {\"background\": \"wheel.png\"},\n"
            "  \"luts\": [{\"name\": \"a.cube\", \"rotation\": 30}, {\"name\": \"b.cube\", \"rotation\": 200}]";
    if (options.post_processing) {
        write_shifted_cube(folder / "p.cube", 0.05f);
        json += ",\n  \"post_processing\": {\"enabled\": true, \"lut\": \"p.cube\"}";
    }
    json += "\n}\n";
    write_file(folder / "theme.json", json);
    return folder;
}

void expect_same_theme(const vl1::hueloom_theme_v1& a, const vl1::hueloom_theme_v1& b)
{
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.uid, b.uid);
    EXPECT_EQ(a.version, b.version);
    EXPECT_EQ(a.background_data, b.background_data);
    ASSERT_EQ(a.luts.size(), b.luts.size());
    for (std::size_t i = 0; i < a.luts.size(); ++i) {
        EXPECT_EQ(a.luts[i].rotation, b.luts[i].rotation);
        EXPECT_TRUE(a.luts[i].lut->data == b.luts[i].lut->data) << "slot " << i;
    }
    ASSERT_EQ(a.post_processing_lut != nullptr, b.post_processing_lut != nullptr);
    if (a.post_processing_lut) {
        EXPECT_TRUE(a.post_processing_lut->data == b.post_processing_lut->data);
    }
}

}  // namespace hueloom_test
