#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "color/argb_float_ops.h"
#include "color/lut_argb.h"

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

}  // namespace
}  // namespace vl1
