#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "color/lut_reader.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

using test::lut_sample_path;
using ::testing::HasSubstr;

const std::string lut_data_dir = (hueloom_test::data_dir() / "lut").string();

TEST(LutFileType, ComesFromTheLastExtensionInAnyCase)
{
    // Without a '.' the whole name is taken as the extension.
    const std::pair<const char*, lut_file_type> cases[] = {
        {"look.v2.CUBE", lut_file_type::cube},      {"dir.3dl/look.3Dl", lut_file_type::three_dl},
        {"CUBE", lut_file_type::cube},              {"asym_2", lut_file_type::unknown},
        {"look.cube.txt", lut_file_type::unknown}, {"look.", lut_file_type::unknown},
    };
    for (const auto& [name, type] : cases)
        EXPECT_EQ(lut_file_type_of(name), type) << name;
}

TEST(LoadLutFromFile, AbsoluteNameStandsAloneAndWhatIsNoLutFileGivesNull)
{
    EXPECT_TRUE(load_lut_from_file_or_resource("/nonexistent", lut_sample_path("asym_2.cube")));
    EXPECT_FALSE(load_lut_from_file_or_resource(lut_data_dir, "missing.cube"));
    EXPECT_FALSE(load_lut_from_file_or_resource(lut_data_dir, "asym_2"));
    EXPECT_FALSE(load_lut_from_file_or_resource(lut_data_dir, "../lut"));
    const std::filesystem::path dir = hueloom_test::make_temp_dir();
    std::filesystem::create_directory(dir / "folder.cube");
    EXPECT_FALSE(load_lut_from_file_or_resource(dir.string(), "folder.cube"));

    // Both formats become tables of edge 32, resampled from their edge of 2.
    const auto three_dl = load_lut_from_file_or_resource(lut_data_dir + "/", "asym_2.3dl");
    ASSERT_TRUE(three_dl);
    EXPECT_NEAR(three_dl->data[lut_index(32, 0, 0, 31)].b, 350.0f / 1024.0f, 1e-6f);
    EXPECT_NEAR(three_dl->data[lut_index(32, 31, 0, 0)].r, 900.0f / 1024.0f, 1e-6f);
}

TEST(LoadLutFromFile, BrokenFileFailsNamingItsPathAndTheTypeComesFromTheName)
{
    try {
        load_lut_from_file_or_resource(lut_data_dir, "short.cube");
        FAIL() << "loaded";
    } catch (const std::logic_error& e) {
        EXPECT_THAT(e.what(), HasSubstr("Less values than dimension^3"));
        EXPECT_THAT(e.what(), HasSubstr(lut_sample_path("short.cube")));
    }
    EXPECT_THROW(load_lut_from_file_or_resource(lut_data_dir, "no_final_line_feed.3dl"), std::logic_error);

    const std::string text = test::read_lut_sample("asym_2.3dl");
    EXPECT_TRUE(load_lut_from_memory(text, "x.3DL"));
    EXPECT_FALSE(load_lut_from_memory(text, "x.lut"));
    EXPECT_THROW(load_lut_from_memory(text, "x.cube"), std::logic_error);
}

}  // namespace
}  // namespace vl1
