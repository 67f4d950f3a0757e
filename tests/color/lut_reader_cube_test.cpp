#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include "color/lut_reader_cube.h"
#include "tests/color/lut_test_files.h"

namespace vl1 {
namespace {

using test::read_lut_sample;
using test::replaced;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* too_few = "ERROR while loading CUBE LUT: Less values than dimension^3 are not supported.";

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

TEST(ReadLutCube, WideDomainDividesByRangePlusOne)
{
    // Domain 0..4 has range 4, above 1, so values divide by 5: 4 gives 0.8. Keywords in any
    // case and CR LF line ends are read too.
    const lut_argb_variable lut = read_lut_cube(read_lut_sample("domain_0_4.cube"), "domain_0_4.cube");
    EXPECT_EQ(lut.data[lut_index(2, 1, 1, 1)], (argb_float{1.0f, 4.0f / 5.0f, 2.0f / 5.0f, 1.0f / 5.0f}));
    EXPECT_EQ(lut.data[lut_index(2, 1, 0, 0)], (argb_float{1.0f, 0.8f, 0.0f, 0.0f}));
}

TEST(ReadLutCube, NarrowDomainDividesByItsRangeAndClampsToIt)
{
    // Domain 0.5..1: range 0.5. 0.75 gives 0.5; 0.5 gives 0.0, lifted to the minimum 0.5.
    const std::string text = replaced(read_lut_sample("asym_2.cube"), "LUT_3D_SIZE 2\n",
                                      "LUT_3D_SIZE 2\nDOMAIN_MIN 0.5 0.5 0.5\nDOMAIN_MAX 1 1 1\n");
    const std::string data = replaced(text, "0.1000 0.2000 0.0500", "0.7500 0.5000 1.0000");
    const lut_argb_variable lut = read_lut_cube(data, "narrow.cube");
    EXPECT_EQ(lut.data[0], (argb_float{1.0f, 0.5f, 0.5f, 1.0f}));
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

enum class failure { too_few, not_a_number, out_of_range };

// The kind and message of what reading `text` throws.
std::string failure_of(const std::string& text, failure kind)
{
    try {
        read_lut_cube(text, "broken.cube");
    } catch (const std::exception& e) {
        const bool right_kind = kind == failure::not_a_number   ? dynamic_cast<const std::invalid_argument*>(&e) != nullptr
                                : kind == failure::out_of_range ? dynamic_cast<const std::out_of_range*>(&e) != nullptr
                                                                : dynamic_cast<const std::logic_error*>(&e) != nullptr;
        return right_kind ? e.what() : std::string("wrong exception type: ") + e.what();
    }
    return "no failure";
}

TEST(ReadLutCubeFailure, EachBrokenLineGivesItsMessage)
{
    const std::string sample = read_lut_sample("asym_2.cube");
    struct failure_case {
        std::string text;
        failure kind;
        std::string message;
    };
    const auto size = [&](const std::string& line) { return replaced(sample, "LUT_3D_SIZE 2", line); };
    const failure_case cases[] = {
        {replaced(sample, "0.9000 0.6000 0.3500\n", ""), failure::too_few, "file 'broken.cube', line"},
        // Lines of fewer than three values in the data end the load.
        {replaced(sample, "0.9000 0.2000 0.0500\n", "0.9000 0.2000 0.0500\n\n"), failure::too_few, too_few},
        {replaced(sample, "0.9000 0.2000 0.0500", "0.9000\t0.2000\t0.0500"), failure::too_few, too_few},
        {"TITLE \"header only\"\nLUT_3D_SIZE 2\n", failure::too_few, too_few},
        {replaced(sample, "0.6000 0.0500", "abc 0.0500"), failure::not_a_number, "'abc' is not a number"},
        {replaced(sample, "0.6000 0.0500", "abc 0.0500"), failure::not_a_number, "line 8: '0.1000 abc 0.0500'"},
        // Two blanks make an empty token.
        {replaced(sample, "0.9000 0.2000", "0.9000  0.2000"), failure::not_a_number, "'' is not a number"},
        {size("LUT_3D_SIZE  2"), failure::not_a_number, "is not a size"},
        {size("LUT_3D_SIZE"), failure::out_of_range, "'LUT_3D_SIZE' needs 1 values"},
        {size("LUT_3D_SIZE 2\nDOMAIN_MAX 1 1"), failure::out_of_range, "'DOMAIN_MAX' needs 3 values"},
        // Sizes that can't be a table are refused before anything is allocated: 1000000³
        // entries would be 16 EB, and the file has a few hundred bytes.
        {size("LUT_3D_SIZE 1"), failure::not_a_number, "a size of 1 is not supported"},
        {size("LUT_3D_SIZE -3"), failure::not_a_number, "is not a size"},
        {size("LUT_3D_SIZE 1000000"), failure::too_few, too_few},
        {size("LUT_3D_SIZE 99999999999999999999"), failure::out_of_range, "out of range"},
    };
    for (const failure_case& c : cases) {
        const std::string message = failure_of(c.text, c.kind);
        EXPECT_THAT(message, HasSubstr(c.message));
        if (c.kind == failure::too_few) {
            EXPECT_THAT(message, StartsWith(too_few));
        }
    }
}

}  // namespace
}  // namespace vl1
