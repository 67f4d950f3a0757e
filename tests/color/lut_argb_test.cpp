// The table type: its operations, the identity it starts as, and trilinear sampling of it.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "color/argb_float_ops.h"
#include "color/lut_argb.h"
#include "color/lut_sampling.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

TEST(ArgbFloatOps, EveryOperationCoversAllFourChannelsAndNanIsNeverEqual)
{
    const argb_float x{0.5f, 0.25f, 1.0f, 2.0f};
    const argb_float y{0.25f, 0.5f, 0.75f, 1.0f};
    EXPECT_EQ(x + y, (argb_float{0.75f, 0.75f, 1.75f, 3.0f}));
    EXPECT_EQ(x - y, (argb_float{0.25f, -0.25f, 0.25f, 1.0f}));
    EXPECT_EQ(x * 2.0f, (argb_float{1.0f, 0.5f, 2.0f, 4.0f}));
    EXPECT_TRUE((argb_float{0.0f, 0.0f, 0.0f, 0.0f}) == (argb_float{-0.0f, -0.0f, -0.0f, -0.0f}));
    for (int i = 0; i < 4; ++i) {
        float off[4] = {1.0f, 0.1f, 0.2f, 0.3f};
        float with_nan[4] = {1.0f, 0.1f, 0.2f, 0.3f};
        off[i] = std::nextafter(off[i], 2.0f);
        with_nan[i] = std::numeric_limits<float>::quiet_NaN();
        const argb_float z{with_nan[0], with_nan[1], with_nan[2], with_nan[3]};
        EXPECT_TRUE((argb_float{1.0f, 0.1f, 0.2f, 0.3f}) != (argb_float{off[0], off[1], off[2], off[3]})) << i;
        EXPECT_FALSE(z == z) << "channel " << i;
    }
}

TEST(LutArgbIdentity, AxesAccumulateStepsOnTheSixteenBitScale)
{
    lut_argb<32> lut;
    ASSERT_EQ(lut.data.size(), 32768u);
    // Grid index i holds i steps of 2114.0322 added one by one (not i * step), scaled once.
    float s = 0.0f;
    for (std::size_t i = 0; i < 32; ++i, s += 2114.0322f) {
        const float expected = s * 1.5259022e-5f;
        EXPECT_EQ(lut.data[lut_index(32, i, 0, 0)], (argb_float{1.0f, expected, 0.0f, 0.0f})) << i;
        EXPECT_EQ(lut.data[lut_index(32, 0, i, 0)], (argb_float{1.0f, 0.0f, expected, 0.0f})) << i;
        EXPECT_EQ(lut.data[lut_index(32, 0, 0, i)], (argb_float{1.0f, 0.0f, 0.0f, expected})) << i;
        EXPECT_NEAR(expected, static_cast<float>(i) / 31.0f, 4e-7f) << i;
    }
    // 31 steps reach 65534.977, just short of 65535: the top lands 3.6e-7 below 1.0.
    const argb_float top = lut.data[32767];
    EXPECT_EQ(std::bit_cast<uint32_t>(top.r), 0x3F7FFFFAu);
    EXPECT_EQ(top, (argb_float{1.0f, top.r, top.r, top.r}));

    // fill_identity restores it in place, and refuses storage of the wrong size.
    const lut_argb<32> identity = lut;
    for (argb_float& e : lut.data)
        e = {0.5f, 0.25f, 0.75f, 0.125f};
    const argb_float* storage = lut.data.data();
    fill_identity(lut);
    EXPECT_EQ(lut.data.data(), storage);
    EXPECT_TRUE(lut.data == identity.data);
    lut.data.pop_back();
    EXPECT_THROW(fill_identity(lut), std::out_of_range);
}

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
