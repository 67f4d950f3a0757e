#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "color/argb_float_ops.h"

namespace vl1 {
namespace {

TEST(ArgbFloatOps, ArithmeticCoversAllFourChannelsIncludingAlpha)
{
    const argb_float x{0.5f, 0.25f, 1.0f, 2.0f};
    const argb_float y{0.25f, 0.5f, 0.75f, 1.0f};
    EXPECT_EQ(x + y, (argb_float{0.75f, 0.75f, 1.75f, 3.0f}));
    EXPECT_EQ(x - y, (argb_float{0.25f, -0.25f, 0.25f, 1.0f}));
    EXPECT_EQ(x * 2.0f, (argb_float{1.0f, 0.5f, 2.0f, 4.0f}));
}

TEST(ArgbFloatOps, EqualityIsExactPerChannelAndNanIsNeverEqual)
{
    const argb_float x{1.0f, 0.1f, 0.2f, 0.3f};
    EXPECT_TRUE(x == (argb_float{1.0f, 0.1f, 0.2f, 0.3f}));
    EXPECT_TRUE((argb_float{0.0f, 0.0f, 0.0f, 0.0f}) == (argb_float{-0.0f, -0.0f, -0.0f, -0.0f}));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (int i = 0; i < 4; ++i) {
        float off[4] = {1.0f, 0.1f, 0.2f, 0.3f};
        float with_nan[4] = {1.0f, 0.1f, 0.2f, 0.3f};
        off[i] = std::nextafter(off[i], 2.0f);
        with_nan[i] = nan;
        const argb_float y{off[0], off[1], off[2], off[3]};
        const argb_float z{with_nan[0], with_nan[1], with_nan[2], with_nan[3]};
        EXPECT_TRUE(x != y) << "channel " << i;
        EXPECT_FALSE(z == z) << "channel " << i;
    }
}

}  // namespace
}  // namespace vl1
