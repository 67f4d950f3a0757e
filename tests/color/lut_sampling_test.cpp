#include <gtest/gtest.h>

#include <limits>

#include "color/argb_float_ops.h"
#include "color/lut_sampling.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

using test::make_lut_32;

// Every entry tells its own grid point: (index, r, g, b) in grid units.
argb_float grid_coordinates(float r, float g, float b) { return {(r * 32.0f + g) * 32.0f + b, r, g, b}; }

TEST(SampleLut, TrilinearPerAxisWithTheInputAlpha)
{
    const lut_argb<32> identity;
    for (int i = 0; i < 32; ++i) {
        const float c = static_cast<float>(i) / 31.0f;
        const argb_float out = sample_lut(identity, {0.25f, c, 1.0f - c, c});
        EXPECT_EQ(out.a, 0.25f);
        EXPECT_NEAR(out.r, c, 5e-7f) << i;
        EXPECT_NEAR(out.g, 1.0f - c, 5e-7f) << i;
        EXPECT_NEAR(out.b, c, 5e-7f) << i;
    }
    // 10.25 / 31 on red, 3.5 / 31 on green, 30.75 / 31 on blue.
    const argb_float out =
        sample_lut(make_lut_32(grid_coordinates), {1.0f, 10.25f / 31.0f, 3.5f / 31.0f, 30.75f / 31.0f});
    EXPECT_NEAR(out.r, 10.25f, 1e-4f);
    EXPECT_NEAR(out.g, 3.5f, 1e-4f);
    EXPECT_NEAR(out.b, 30.75f, 1e-4f);

    // r * g * b is 1 only at the far corner of the first cell: the trilinear value at the
    // cell's centre is the mean of the eight corners, 1/8 (tetrahedral would give 1/2).
    const lut_argb<32> product =
        make_lut_32([](float r, float g, float b) { return argb_float{0.0f, r * g * b, r, b}; });
    const float half = 0.5f / 31.0f;
    EXPECT_EQ(sample_lut(product, {1.0f, half, half, half}).r, 0.125f);
}

TEST(SampleLut, WhiteAndInputsOutsideTheUnitRangeReadTheTableEdge)
{
    const lut_argb<32> lut = make_lut_32(grid_coordinates);
    EXPECT_EQ(sample_lut(lut, {0.5f, 1.0f, 1.0f, 1.0f}), (argb_float{0.5f, 31.0f, 31.0f, 31.0f}));
    EXPECT_EQ(sample_lut(lut, {1.0f, -0.5f, 7.0f, 7.0f}), (argb_float{1.0f, 0.0f, 31.0f, 31.0f}));
    EXPECT_EQ(sample_lut(lut, {1.0f, 7.0f, -0.5f, 0.0f}), (argb_float{1.0f, 31.0f, 0.0f, 0.0f}));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(sample_lut(lut, {1.0f, nan, 1.0f, nan}), (argb_float{1.0f, 0.0f, 31.0f, 0.0f}));
    lut_argb<32> wrong_size;
    wrong_size.data.resize(100);
    EXPECT_THROW(sample_lut(wrong_size, {1.0f, 0.5f, 0.5f, 0.5f}), std::out_of_range);
}

}  // namespace
}  // namespace vl1
