#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>

#include "color/lut_reader_cube.h"
#include "color/lut_text_reader.h"
#include "color/lut_writer_cube.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

TEST(LutTextReader, NumbersAreReadLikeTheCLibraryDoesAndSizesAreUnsignedDecimals)
{
    const lut_text_reader reader("", "CUBE", "x.cube");
    const std::pair<const char*, float> floats[] = {{"0.5", 0.5f},    {"  +0.25", 0.25f}, {"-1e-1", -0.1f},
                                                    {"0.75abc", 0.75f}, {"0x1p-1", 0.5f},  {"0x", 0.0f},
                                                    {"inf", INFINITY}};
    for (const auto& [text, value] : floats)
        EXPECT_EQ(reader.parse_float(text), value) << text;
    for (const char* text : {"", "abc", "+-1"})
        EXPECT_THROW(reader.parse_float(text), std::invalid_argument) << text;
    EXPECT_THROW(reader.parse_float("1e50"), std::out_of_range);

    EXPECT_EQ(reader.parse_size("33"), 33u);
    EXPECT_EQ(reader.parse_size(" +17x"), 17u);
    EXPECT_THROW(reader.parse_size("-1"), std::invalid_argument);
    EXPECT_THROW(reader.parse_size("x"), std::invalid_argument);
}

// Restores the process locale when the test ends.
class GermanLocale : public ::testing::Test {
protected:
    void SetUp() override
    {
        previous = std::setlocale(LC_ALL, nullptr);
        if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
            GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed (localedef -i de_DE -f UTF-8 de_DE.UTF-8)";
    }
    void TearDown() override { std::setlocale(LC_ALL, previous.c_str()); }

    std::string previous;
};

TEST_F(GermanLocale, DecimalPointIsAPointWhateverTheLocale)
{
    ASSERT_EQ(std::strtof("0,5", nullptr), 0.5f) << "the locale should take ',' as decimal point";
    const lut_text_reader reader("", "CUBE", "x.cube");
    EXPECT_EQ(reader.parse_float("0.5"), 0.5f);
    const lut_argb_variable lut = read_lut_cube(
        "LUT_3D_SIZE 2\n0.5 0.25 0.125\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n", "de.cube");
    EXPECT_EQ(lut.data[0], (argb_float{1.0f, 0.5f, 0.25f, 0.125f}));
    // The writer too.
    const std::string path = (hueloom_test::make_temp_dir() / "de.cube").string();
    ASSERT_TRUE(write_lut_cube(make_identity_17(), path, "", ""));
    EXPECT_EQ(test::file_lines(path)[4], "0.0625 0.0000 0.0000");
}

}  // namespace
}  // namespace vl1
