// The .cube and .3dl readers: axis order, scales and domains, and the refusal of each kind of
// broken line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include "color/lut_reader_3dl.h"
#include "color/lut_reader_cube.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

using test::read_lut_sample;
using test::replaced;
using ::testing::StartsWith;

TEST(ReadLut, AxisOrderAndScaleOfEachFormat)
{
    // Each sample has its own value on every axis, so a reader that takes the wrong axis as
    // the fastest puts them in the wrong places.
    const struct {
        const char* file;
        lut_argb_variable lut;
        float red[2], green[2], blue[2];
    } cases[] = {
        {"asym_2.cube", read_lut_cube(read_lut_sample("asym_2.cube"), "asym_2.cube"), {0.1f, 0.9f}, {0.2f, 0.6f},
         {0.05f, 0.35f}},
        {"asym_2.3dl", read_lut_3dl(read_lut_sample("asym_2.3dl"), "asym_2.3dl"), {100.0f / 1024, 900.0f / 1024},
         {200.0f / 1024, 600.0f / 1024}, {50.0f / 1024, 350.0f / 1024}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        ASSERT_EQ(c.lut.edge, 2u);
        ASSERT_EQ(c.lut.data.size(), 8u);
        for (std::size_t r = 0; r < 2; ++r)
            for (std::size_t g = 0; g < 2; ++g)
                for (std::size_t b = 0; b < 2; ++b)
                    EXPECT_EQ(c.lut.data[lut_index(2, r, g, b)], (argb_float{1.0f, c.red[r], c.green[g], c.blue[b]}))
                        << r << g << b;
    }
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

TEST(ReadLut3dl, DivisorComesFromTheLargestValueAndTheShaper)
{
    const std::string sample = read_lut_sample("asym_2.3dl");
    struct scale_case {
        const char* what;
        std::string text;
        std::size_t index;
        argb_float expected;
    };
    const float w12 = 4095.0f / 4096.0f;
    const scale_case cases[] = {
        {"twelve-bit white", read_lut_sample("twelve_bit.3dl"), 7, {1.0f, w12, w12, w12}},
        {"twelve-bit blue", read_lut_sample("twelve_bit.3dl"), 1, {1.0f, 0.0f, 0.0f, w12}},
        // 1024 is a power of two: bits stay 1024, top 1023, divisor 1024.
        {"power of two", replaced(sample, "900 600 350", "1024 600 350"), 7, {1.0f, 1.0f, 600.0f / 1024.0f, 350.0f / 1024.0f}},
        // Largest value 1.0: bits 1, so the top is the shaper's 1023 and 1.0 reads 1/1024.
        {"float values", "0 1023\n0 0 0\n0 0 1\n0 1 0\n0 1 1\n1 0 0\n1 0 1\n1 1 0\n1 1 1\n", 7,
         {1.0f, 1.0f / 1024.0f, 1.0f / 1024.0f, 1.0f / 1024.0f}},
        // first = 64: divisor = 1023 - 64 + 1 = 960; v / 960 - 64 is below 64 for every v here.
        {"shaper start", replaced(sample, "0 1023", "64 1023"), 0, {1.0f, 64.0f, 64.0f, 64.0f}},
        // Comments and lines of fewer than three values in the data are skipped.
        {"comments", replaced(sample, "100 200 350\n", "# note\n100 200\n100 200 350 7\n"), 1,
         {1.0f, 100.0f / 1024.0f, 200.0f / 1024.0f, 350.0f / 1024.0f}},
        // Text behind a number is ignored, as by the C library's conversion.
        {"text behind a number", replaced(sample, "900 600 350", "900 6o0 350"), 7,
         {1.0f, 900.0f / 1024.0f, 6.0f / 1024.0f, 350.0f / 1024.0f}},
    };
    for (const scale_case& c : cases)
        EXPECT_EQ(read_lut_3dl(c.text, "x.3dl").data.at(c.index), c.expected) << c.what;
}

TEST(ReadLutFailure, EachBrokenLineGivesItsMessage)
{
    const std::string cube = read_lut_sample("asym_2.cube"), three_dl = read_lut_sample("asym_2.3dl");
    const std::string too_few = "logic_error: ERROR while loading CUBE LUT: Less values than dimension^3 are not "
                                "supported.";
    const std::string too_few_3dl = "logic_error: ERROR while loading 3DL LUT: Less values than needed.";
    const std::string not_a = "invalid_argument: ERROR while loading CUBE LUT: '";
    const auto size = [&](const std::string& line) { return replaced(cube, "LUT_3D_SIZE 2", line); };
    const struct {
        lut_argb_variable (*read)(std::string_view, const std::string&);
        std::string text, failure;
    } cases[] = {
        {read_lut_cube, replaced(cube, "0.9000 0.6000 0.3500\n", ""), too_few + " [file 'broken', line"},
        // A line of fewer than three values (here a blank one) ends the data.
        {read_lut_cube, replaced(cube, "0.9000 0.2000 0.0500\n", "0.9000 0.2000 0.0500\n\n"), too_few},
        {read_lut_cube, replaced(cube, "0.6000 0.0500", "abc 0.0500"),
         not_a + "abc' is not a number [file 'broken', line 8: '0.1000 abc 0.0500']"},
        // Two blanks make an empty token.
        {read_lut_cube, replaced(cube, "0.9000 0.2000", "0.9000  0.2000"), not_a + "' is not a number"},
        {read_lut_cube, size("LUT_3D_SIZE  2"), not_a + "' is not a size"},
        {read_lut_cube, size("LUT_3D_SIZE 2\nDOMAIN_MAX 1 1"),
         "out_of_range: ERROR while loading CUBE LUT: 'DOMAIN_MAX' needs 3 values"},
        // Sizes that can't be a table are refused before anything is allocated: 1000000³
        // entries would be 16 EB, and the file has a few hundred bytes.
        {read_lut_cube, size("LUT_3D_SIZE 1"),
         "invalid_argument: ERROR while loading CUBE LUT: a size of 1 is not supported"},
        {read_lut_cube, size("LUT_3D_SIZE 1000000"), too_few},
        {read_lut_cube, size("LUT_3D_SIZE 99999999999999999999"), "out_of_range: "},
        {read_lut_3dl, read_lut_sample("no_final_line_feed.3dl"),
         too_few_3dl + " [file 'broken', line 9: '1023 1023 1023']"},
        {read_lut_3dl, replaced(three_dl, "900 600 350\n", ""), too_few_3dl},
        {read_lut_3dl, "", too_few_3dl},
        {read_lut_3dl, replaced(three_dl, "900 600 350", "900 x 350"), "invalid_argument: "},
        // A white-space-only header line (a bare carriage return) is empty after trimming.
        {read_lut_3dl, replaced(three_dl, "3DMESH\n", "3DMESH\n\r\n"), "out_of_range: "},
        // One shaper token is an edge of 1.
        {read_lut_3dl, replaced(three_dl, "0 1023", "1023"), "invalid_argument: "},
    };
    for (const auto& c : cases)
        EXPECT_THAT(test::failure_of([&] { c.read(c.text, "broken"); }), StartsWith(c.failure)) << c.text.substr(0, 60);
}

}  // namespace
}  // namespace vl1
