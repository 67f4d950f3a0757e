#include <gtest/gtest.h>

#include "color/argb_float_ops.h"
#include "color/lut_resample.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

using test::make_lut_variable;

// Each channel holds its grid coordinate, so a resampled entry tells the source position
// (i0 + f) it was interpolated at; alpha carries red + 100 to show it is resampled too.
argb_float coordinates(float r, float g, float b)
{
    return {r + 100.0f, r, g, b};
}

TEST(ResampleLutTo32, SeventeenPointsReachTheirLastEntryAtIndexThirtyOne)
{
    const lut_argb<32> out = resample_lut_to_32(make_lut_variable(17, coordinates));
    // Index 31: i0 = min(15, trunc(0.516129 * 31)) = 15, f = 31 / (31 / 16) - 15 = 1.0.
    EXPECT_EQ(out.data[lut_index(32, 31, 31, 31)], (argb_float{116.0f, 16.0f, 16.0f, 16.0f}));
    EXPECT_EQ(out.data[0], (argb_float{100.0f, 0.0f, 0.0f, 0.0f}));
    // Index 16: 16 * 16 / 31 = 8.258..., between source points 8 and 9.
    const argb_float mid = out.data[lut_index(32, 16, 0, 31)];
    EXPECT_NEAR(mid.r, 16.0f * 16.0f / 31.0f, 2e-6f);
    EXPECT_NEAR(mid.a, 100.0f + 16.0f * 16.0f / 31.0f, 2e-5f);
    EXPECT_EQ(mid.b, 16.0f);
}

TEST(ResampleLutTo32, EveryEdgeKeepsALinearTableLinearAndThirtyTwoIsCopiedBitForBit)
{
    for (const std::size_t edge : {2u, 3u, 17u, 33u, 65u}) {
        const lut_argb<32> out = resample_lut_to_32(make_lut_variable(edge, coordinates));
        const float scale = static_cast<float>(edge - 1) / 31.0f;
        for (std::size_t i = 0; i < 32; ++i) {
            const argb_float e = out.data[lut_index(32, i, 31 - i, i)];
            ASSERT_NEAR(e.r, static_cast<float>(i) * scale, 2e-5f * static_cast<float>(edge)) << edge << " " << i;
            ASSERT_NEAR(e.g, static_cast<float>(31 - i) * scale, 2e-5f * static_cast<float>(edge)) << edge;
        }
    }
    lut_argb_variable source = make_lut_variable(32, coordinates);
    source.data[5] = {0.1f, -3.0f, 1e30f, 0.3f};
    EXPECT_TRUE(resample_lut_to_32(source).data == source.data);
}

TEST(ResampleLutTo17, ThirtyTwoPointsMapToFileIndices)
{
    const lut_argb_variable out = resample_lut_to_17(make_lut_variable(32, coordinates));
    ASSERT_EQ(out.edge, 17u);
    ASSERT_EQ(out.data.size(), 4913u);
    // k = 31 * 0.0625 = 1.9375. Index 16: i0 = 30, f = 16 / (16 / 31) - 30, 1.0 up to rounding.
    const argb_float top = out.data[lut_index(17, 16, 8, 0)];
    EXPECT_NEAR(top.r, 31.0f, 4e-6f);
    // Index 8: i0 = trunc(15.5) = 15 and f = 0.5 up to rounding.
    EXPECT_NEAR(top.g, 15.5f, 4e-6f);
    EXPECT_EQ(top.b, 0.0f);
    const lut_argb_variable seventeen = make_identity_17();
    EXPECT_TRUE(resample_lut_to_17(seventeen).data == seventeen.data);
}

TEST(ResampleLut, TablesThatCantBeInterpolatedAreRefused)
{
    lut_argb_variable one;
    one.edge = 1;
    one.data.resize(1);
    EXPECT_THROW(resample_lut_to_32(one), std::invalid_argument);
    EXPECT_THROW(resample_lut_to_17(one), std::invalid_argument);

    lut_argb_variable short_data = make_identity_17();
    short_data.data.pop_back();
    EXPECT_THROW(resample_lut_to_32(short_data), std::out_of_range);
    short_data.edge = 16;
    EXPECT_THROW(resample_lut_to_17(short_data), std::out_of_range);
}

}  // namespace
}  // namespace vl1
