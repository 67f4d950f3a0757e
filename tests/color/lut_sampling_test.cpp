#include <gtest/gtest.h>

#include <limits>

#include "color/argb_float_ops.h"
#include "color/lut_sampling.h"
#include "tests/color/lut_test_tables.h"

namespace vl1 {
namespace {

using test::grid_coordinates;
using test::make_lut_32;

TEST(SampleLut, GridColoursOfTheIdentityComeBackWithTheInputAlpha)
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
}

TEST(SampleLut, WhiteAndInputsOutsideTheUnitRangeReadTheTableEdge)
{
    const lut_argb<32> lut = make_lut_32(grid_coordinates);
    EXPECT_EQ(sample_lut(lut, {0.5f, 1.0f, 1.0f, 1.0f}), (argb_float{0.5f, 31.0f, 31.0f, 31.0f}));
    EXPECT_EQ(sample_lut(lut, {1.0f, -0.5f, 7.0f, 7.0f}), (argb_float{1.0f, 0.0f, 31.0f, 31.0f}));
    EXPECT_EQ(sample_lut(lut, {1.0f, 7.0f, -0.5f, 0.0f}), (argb_float{1.0f, 31.0f, 0.0f, 0.0f}));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(sample_lut(lut, {1.0f, nan, 1.0f, nan}), (argb_float{1.0f, 0.0f, 31.0f, 0.0f}));
}

TEST(SampleLut, InterpolationIsTrilinearNotTetrahedral)
{
    // r * g * b is 1 only at the far corner of the first cell: the trilinear value at the
    // cell's centre is the mean of the eight corners, 1/8 (tetrahedral would give 1/2).
    const lut_argb<32> lut = make_lut_32([](float r, float g, float b) {
        return argb_float{0.0f, r * g * b, r, b};
    });
    const float half = 0.5f / 31.0f;
    const argb_float out = sample_lut(lut, {1.0f, half, half, half});
    EXPECT_EQ(out.r, 0.125f);
    EXPECT_NEAR(out.g, 0.5f, 1e-5f);
    EXPECT_NEAR(out.b, 0.5f, 1e-5f);
}

TEST(SampleLut, FractionsFollowEachAxisSeparately)
{
    const lut_argb<32> lut = make_lut_32(grid_coordinates);
    // 10.25 / 31 on red, 3.5 / 31 on green, 30.75 / 31 on blue.
    const argb_float out = sample_lut(lut, {1.0f, 10.25f / 31.0f, 3.5f / 31.0f, 30.75f / 31.0f});
    EXPECT_NEAR(out.r, 10.25f, 1e-4f);
    EXPECT_NEAR(out.g, 3.5f, 1e-4f);
    EXPECT_NEAR(out.b, 30.75f, 1e-4f);
    lut_argb<32> wrong_size;
    wrong_size.data.resize(100);
    EXPECT_THROW(sample_lut(wrong_size, {1.0f, 0.5f, 0.5f, 0.5f}), std::out_of_range);
}

TEST(MapLutThrough, IdentityThroughIdentityKeepsColoursAndAlpha)
{
    lut_argb<32> target;
    for (std::size_t i = 0; i < target.data.size(); i += 7)
        target.data[i].a = 0.5f;
    const lut_argb<32> before = target;
    const lut_argb<32> map = make_lut_32([](float r, float g, float b) {
        return argb_float{0.0f, r / 31.0f, g / 31.0f, b / 31.0f};
    });
    map_lut_through(target, map);
    for (std::size_t i = 0; i < target.data.size(); ++i) {
        ASSERT_EQ(target.data[i].a, before.data[i].a) << i;
        ASSERT_NEAR(target.data[i].r, before.data[i].r, 5e-7f) << i;
        ASSERT_NEAR(target.data[i].g, before.data[i].g, 5e-7f) << i;
        ASSERT_NEAR(target.data[i].b, before.data[i].b, 5e-7f) << i;
    }
}

TEST(MapLutThrough, EveryEntryIsMappedFromItsOldValue)
{
    // Inverting twice must give the start back: a mapping that read entries it had already
    // changed would not.
    const lut_argb<32> invert = make_lut_32([](float r, float g, float b) {
        return argb_float{1.0f, 1.0f - r / 31.0f, 1.0f - g / 31.0f, 1.0f - b / 31.0f};
    });
    lut_argb<32> target;
    map_lut_through(target, invert);
    EXPECT_NEAR(target.data[0].r, 1.0f, 1e-6f);
    EXPECT_NEAR(target.data[32767].b, 0.0f, 1e-6f);
    map_lut_through(target, invert);
    const lut_argb<32> identity;
    for (std::size_t i = 0; i < target.data.size(); ++i)
        ASSERT_NEAR(target.data[i].g, identity.data[i].g, 1e-6f) << i;
}

}  // namespace
}  // namespace vl1
