#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include "color/lut_reader_cube.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

using test::read_lut_sample;
using test::replaced;
using ::testing::StartsWith;

constexpr const char* too_few_text = "ERROR while loading CUBE LUT: Less values than dimension^3 are not supported.";

TEST(ReadLutCube, RedRunsFastestInTheFile)
{
    const lut_argb_variable lut = read_lut_cube(read_lut_sample("asym_2.cube"), "asym_2.cube");
    ASSERT_EQ(lut.edge, 2u);
    ASSERT_EQ(lut.data.size(), 8u);
    const float red[2] = {0.1f, 0.9f};
    const float green[2] = {0.2f, 0.6f};
    const float blue[2] = {0.05f, 0.35f};
    for (std::size_t r = 0; r < 2; ++r)
        for (std::size_t g = 0; g < 2; ++g)
            for (std::size_t b = 0; b < 2; ++b)
                EXPECT_EQ(lut.data[lut_index(2, r, g, b)], (argb_float{1.0f, red[r], green[g], blue[b]}))
                    << r << g << b;
}

TEST(ReadLutCube, DomainsWiderThanOneDivideByRangePlusOneNarrowerOnesByRangeAndClamp)
{
    // Domain 0..4 has range 4, above 1, so values divide by 5: 4 gives 0.8. Keywords in any
    // case and CR LF line ends are read too.
    const lut_argb_variable wide = read_lut_cube(read_lut_sample("domain_0_4.cube"), "domain_0_4.cube");
    EXPECT_EQ(wide.data[lut_index(2, 1, 1, 1)], (argb_float{1.0f, 4.0f / 5.0f, 2.0f / 5.0f, 1.0f / 5.0f}));
    EXPECT_EQ(wide.data[lut_index(2, 1, 0, 0)], (argb_float{1.0f, 0.8f, 0.0f, 0.0f}));

    // Domain 0.5..1: range 0.5. 0.75 gives 0.5; 0.5 gives 0.0, lifted to the minimum 0.5.
    const std::string text = replaced(read_lut_sample("asym_2.cube"), "LUT_3D_SIZE 2\n",
                                      "LUT_3D_SIZE 2\nDOMAIN_MIN 0.5 0.5 0.5\nDOMAIN_MAX 1 1 1\n");
    const lut_argb_variable narrow =
        read_lut_cube(replaced(text, "0.1000 0.2000 0.0500", "0.7500 0.5000 1.0000"), "n.cube");
    EXPECT_EQ(narrow.data[0], (argb_float{1.0f, 0.5f, 0.5f, 1.0f}));
}

TEST(ReadLutCube, WithoutSizeLineSeventeenCubedValuesAreRead)
{
    std::string text = "TITLE \"no size\"\n";
    for (int i = 0; i < 4913; ++i)
        text += fmt::format("{} 0.5 0.25\n", i == 1 ? "1.0" : "0.0");
    text += "this line is never read\n";
    const lut_argb_variable lut = read_lut_cube(text, "nosize.cube");
    ASSERT_EQ(lut.edge, 17u);
    EXPECT_EQ(lut.data[lut_index(17, 1, 0, 0)], (argb_float{1.0f, 1.0f, 0.5f, 0.25f}));
    EXPECT_EQ(lut.data[lut_index(17, 0, 0, 1)].r, 0.0f);
}

TEST(ReadLutCubeFailure, EachBrokenLineGivesItsMessage)
{
    const std::string sample = read_lut_sample("asym_2.cube");
    const std::string too_few = "logic_error: " + std::string(too_few_text);
    const std::string not_a = "invalid_argument: ERROR while loading CUBE LUT: '";
    const auto size = [&](const std::string& line) { return replaced(sample, "LUT_3D_SIZE 2", line); };
    const std::pair<std::string, std::string> cases[] = {
        {replaced(sample, "0.9000 0.6000 0.3500\n", ""), too_few + " [file 'broken.cube', line"},
        // A line of fewer than three values (here a blank one) ends the data.
        {replaced(sample, "0.9000 0.2000 0.0500\n", "0.9000 0.2000 0.0500\n\n"), too_few},
        {replaced(sample, "0.6000 0.0500", "abc 0.0500"),
         not_a + "abc' is not a number [file 'broken.cube', line 8: '0.1000 abc 0.0500']"},
        // Two blanks make an empty token.
        {replaced(sample, "0.9000 0.2000", "0.9000  0.2000"), not_a + "' is not a number"},
        {size("LUT_3D_SIZE  2"), not_a + "' is not a size"},
        {size("LUT_3D_SIZE 2\nDOMAIN_MAX 1 1"),
         "out_of_range: ERROR while loading CUBE LUT: 'DOMAIN_MAX' needs 3 values"},
        // Sizes that can't be a table are refused before anything is allocated: 1000000³
        // entries would be 16 EB, and the file has a few hundred bytes.
        {size("LUT_3D_SIZE 1"), "invalid_argument: ERROR while loading CUBE LUT: a size of 1 is not supported"},
        {size("LUT_3D_SIZE 1000000"), too_few},
        {size("LUT_3D_SIZE 99999999999999999999"), "out_of_range: "},
    };
    for (const auto& [text, failure] : cases)
        EXPECT_THAT(test::failure_of([&] { read_lut_cube(text, "broken.cube"); }), StartsWith(failure))
            << text.substr(0, 40);
}

}  // namespace
}  // namespace vl1
