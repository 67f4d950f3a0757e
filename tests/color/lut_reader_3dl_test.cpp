#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "color/lut_reader_3dl.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

using test::read_lut_sample;
using test::replaced;
using ::testing::StartsWith;

TEST(ReadLut3dl, BlueRunsFastestAndTenBitValuesDivideByOneThousandTwentyFour)
{
    const lut_argb_variable lut = read_lut_3dl(read_lut_sample("asym_2.3dl"), "asym_2.3dl");
    ASSERT_EQ(lut.edge, 2u);
    const float red[2] = {100.0f / 1024.0f, 900.0f / 1024.0f};
    const float green[2] = {200.0f / 1024.0f, 600.0f / 1024.0f};
    const float blue[2] = {50.0f / 1024.0f, 350.0f / 1024.0f};
    for (std::size_t r = 0; r < 2; ++r)
        for (std::size_t g = 0; g < 2; ++g)
            for (std::size_t b = 0; b < 2; ++b)
                EXPECT_EQ(lut.data[lut_index(2, r, g, b)], (argb_float{1.0f, red[r], green[g], blue[b]}))
                    << r << g << b;
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

TEST(ReadLut3dl, BrokenFilesAreRefused)
{
    const std::string sample = read_lut_sample("asym_2.3dl");
    const std::string too_few = "logic_error: ERROR while loading 3DL LUT: Less values than needed.";
    const std::pair<std::string, std::string> cases[] = {
        {read_lut_sample("no_final_line_feed.3dl"), too_few + " [file 'x.3dl', line 9: '1023 1023 1023']"},
        {replaced(sample, "900 600 350\n", ""), too_few},
        {"", too_few},
        {replaced(sample, "900 600 350", "900 x 350"), "invalid_argument: "},
        // A white-space-only header line (a bare carriage return) is empty after trimming.
        {replaced(sample, "3DMESH\n", "3DMESH\n\r\n"), "out_of_range: "},
        // One shaper token is an edge of 1.
        {replaced(sample, "0 1023", "1023"), "invalid_argument: "},
    };
    for (const auto& [text, failure] : cases)
        EXPECT_THAT(test::failure_of([&] { read_lut_3dl(text, "x.3dl"); }), StartsWith(failure)) << text;
}

}  // namespace
}  // namespace vl1
