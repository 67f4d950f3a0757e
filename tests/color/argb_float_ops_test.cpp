#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "color/argb_float_ops.h"

namespace vl1 {
namespace {

float& channel(argb_float& c, int i)
{
    switch (i) {
    case 0: return c.a;
    case 1: return c.r;
    case 2: return c.g;
    default: return c.b;
    }
}

TEST(ArgbFloatOps, ArithmeticCoversAllFourChannelsIncludingAlpha)
{
    const argb_float x{0.5f, 0.25f, 1.0f, 2.0f};
    const argb_float y{0.25f, 0.5f, 0.75f, 1.0f};
    EXPECT_EQ(x + y, (argb_float{0.75f, 0.75f, 1.75f, 3.0f}));
    EXPECT_EQ(x - y, (argb_float{0.25f, -0.25f, 0.25f, 1.0f}));
    EXPECT_EQ(x * 2.0f, (argb_float{1.0f, 0.5f, 2.0f, 4.0f}));
}

TEST(ArgbFloatOps, EqualityIsExactPerChannel)
{
    const argb_float x{1.0f, 0.1f, 0.2f, 0.3f};
    argb_float y = x;
    EXPECT_TRUE(x == y);
    EXPECT_FALSE(x != y);
    y.g = std::nextafter(y.g, 1.0f);
    EXPECT_FALSE(x == y);
    EXPECT_TRUE(x != y);
    y = x;
    y.a = 0.0f;
    EXPECT_TRUE(x != y);
}

TEST(ArgbFloatOps, NanInAnyChannelMakesValuesUnequal)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (int i = 0; i < 4; ++i) {
        argb_float x{1.0f, 0.5f, 0.5f, 0.5f};
        channel(x, i) = nan;
        EXPECT_FALSE(x == x) << "channel " << i;
        EXPECT_TRUE(x != x) << "channel " << i;
    }
}

}  // namespace
}  // namespace vl1
