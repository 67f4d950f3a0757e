#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <fmt/format.h>

#include "color/lut_reader.h"
#include "framework/cutils_linux.h"
#include "tests/color/lut_test_files.h"

namespace vl1 {
namespace {

using test::lut_sample_path;
using ::testing::HasSubstr;

std::string lut_data_dir()
{
    return (hueloom_test::data_dir() / "lut").string();
}

void write_file(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

// A .cube text of edge n whose value at grid point (r, g, b) is (r, g * g, b) / (n - 1).
std::string ramp_cube(int n)
{
    std::string text = fmt::format("LUT_3D_SIZE {}\n", n);
    const float top = static_cast<float>(n - 1);
    for (int b = 0; b < n; ++b)
        for (int g = 0; g < n; ++g)
            for (int r = 0; r < n; ++r)
                text += fmt::format("{} {} {}\n", r / top, g * g / (top * top), b / top);
    return text;
}

TEST(LutFileType, ComesFromTheLastExtensionInAnyCase)
{
    EXPECT_EQ(lut_file_type_of("look.v2.CUBE"), lut_file_type::cube);
    EXPECT_EQ(lut_file_type_of("dir.3dl/look.3Dl"), lut_file_type::three_dl);
    // Without a '.' the whole name is taken as the extension.
    EXPECT_EQ(lut_file_type_of("CUBE"), lut_file_type::cube);
    EXPECT_EQ(lut_file_type_of("asym_2"), lut_file_type::unknown);
    EXPECT_EQ(lut_file_type_of("look.cube.txt"), lut_file_type::unknown);
    EXPECT_EQ(lut_file_type_of("look."), lut_file_type::unknown);
}

TEST(LoadLutFromFile, ReadsBothFormatsAsTablesOfEdgeThirtyTwo)
{
    const std::shared_ptr<lut_argb<32>> cube = load_lut_from_file_or_resource(lut_data_dir(), "asym_2.cube");
    ASSERT_TRUE(cube);
    const argb_float red_corner = cube->data[lut_index(32, 31, 0, 0)];
    EXPECT_NEAR(red_corner.r, 0.9f, 1e-6f);
    EXPECT_NEAR(red_corner.g, 0.2f, 1e-6f);
    EXPECT_NEAR(red_corner.b, 0.05f, 1e-6f);

    const std::shared_ptr<lut_argb<32>> three_dl = load_lut_from_file_or_resource(lut_data_dir() + "/", "asym_2.3dl");
    ASSERT_TRUE(three_dl);
    EXPECT_NEAR(three_dl->data[lut_index(32, 0, 0, 31)].b, 350.0f / 1024.0f, 1e-6f);
}

TEST(LoadLutFromFile, AbsoluteNameStandsAloneAndMissingFilesGiveNull)
{
    EXPECT_TRUE(load_lut_from_file_or_resource("/nonexistent", lut_sample_path("asym_2.cube")));
    EXPECT_FALSE(load_lut_from_file_or_resource(lut_data_dir(), "missing.cube"));
    EXPECT_FALSE(load_lut_from_file_or_resource(lut_data_dir(), "asym_2"));
    EXPECT_FALSE(load_lut_from_file_or_resource(lut_data_dir(), "../lut"));
    const std::filesystem::path dir = hueloom_test::make_temp_dir();
    std::filesystem::create_directory(dir / "folder.cube");
    EXPECT_FALSE(load_lut_from_file_or_resource(dir.string(), "folder.cube"));
}

TEST(LoadLutFromFile, EdgeThirtyTwoIsTakenAsItIsAndOtherEdgesResampled)
{
    const std::filesystem::path dir = hueloom_test::make_temp_dir();
    for (const int n : {17, 32, 33}) {
        write_file(dir / fmt::format("ramp{}.cube", n), ramp_cube(n));
        const auto lut = load_lut_from_file_or_resource(dir.string(), fmt::format("ramp{}.cube", n));
        ASSERT_TRUE(lut) << n;
        // Green is quadratic, so resampling shows between the source's grid points.
        const float g = lut->data[lut_index(32, 0, 16, 0)].g;
        if (n == 32)
            EXPECT_EQ(g, 16.0f * 16.0f / (31.0f * 31.0f));
        else
            EXPECT_NEAR(g, 16.0f * 16.0f / (31.0f * 31.0f), 2e-3f) << n;
        EXPECT_NEAR(lut->data[lut_index(32, 31, 31, 31)].r, 1.0f, 1e-6f) << n;
    }
}

TEST(LoadLutFromFile, BrokenFileFailsNamingItsPath)
{
    try {
        load_lut_from_file_or_resource(lut_data_dir(), "short.cube");
        FAIL() << "loaded";
    } catch (const std::logic_error& e) {
        EXPECT_THAT(e.what(), HasSubstr("Less values than dimension^3"));
        EXPECT_THAT(e.what(), HasSubstr(lut_sample_path("short.cube")));
    }
    EXPECT_THROW(load_lut_from_file_or_resource(lut_data_dir(), "no_final_line_feed.3dl"), std::logic_error);
}

TEST(LoadLutFromResource, BytesComeThroughThePlatformResources)
{
    set_resource_dir(lut_data_dir());
    const auto lut = load_lut_from_resource("asym_2.cube");
    const auto missing = load_lut_from_resource("missing.cube");
    const auto unknown = load_lut_from_resource("twelve_bit.txt");
    set_resource_dir("");
    ASSERT_TRUE(lut);
    EXPECT_NEAR(lut->data[lut_index(32, 31, 0, 0)].r, 0.9f, 1e-6f);
    EXPECT_FALSE(missing);
    EXPECT_FALSE(unknown);
}

TEST(LoadLutFromMemory, TypeComesFromTheName)
{
    const std::string text = test::read_lut_sample("asym_2.3dl");
    EXPECT_TRUE(load_lut_from_memory(text, "x.3DL"));
    EXPECT_FALSE(load_lut_from_memory(text, "x.lut"));
    EXPECT_THROW(load_lut_from_memory(text, "x.cube"), std::logic_error);
}

}  // namespace
}  // namespace vl1
