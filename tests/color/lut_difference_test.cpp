#include <gtest/gtest.h>

#include <cmath>

#include "color/argb_float_ops.h"
#include "color/lut_difference.h"
#include "tests/color/lut_test_tables.h"

namespace vl1 {
namespace {

// The plain-quotient identity with `offset` added to red.
lut_argb<32> offset_red(float offset)
{
    return test::make_lut_32([offset](float r, float g, float b) {
        return argb_float{1.0f, r / 31.0f + offset, g / 31.0f, b / 31.0f};
    });
}

TEST(AddLutDifference, AddsTheScaledDeviationFromTheQuotientIdentity)
{
    lut_argb<32> lut;
    const lut_argb<32> before = lut;
    add_lut_difference(lut, offset_red(0.25f), 0.5f);
    // Entry 0: identity 0.0 on red, deviation 0.25, half of it added.
    EXPECT_EQ(lut.data[0], (argb_float{1.0f, 0.125f, 0.0f, 0.0f}));
    const std::size_t i = lut_index(32, 10, 3, 7);
    EXPECT_NEAR(lut.data[i].r, before.data[i].r + 0.125f, 1e-6f);
    EXPECT_NEAR(lut.data[i].g, before.data[i].g, 1e-6f);
}

TEST(AddLutDifference, ClampsEachChannelToTheUnitRange)
{
    lut_argb<32> lut;
    add_lut_difference(lut, offset_red(0.5f), 2.0f);
    EXPECT_EQ(lut.data[lut_index(32, 16, 0, 0)].r, 1.0f);
    add_lut_difference(lut, offset_red(-1.0f), 3.0f);
    EXPECT_EQ(lut.data[lut_index(32, 31, 0, 0)].r, 0.0f);
    // Alpha differs from the identity's 1.0 only through the source; it is clamped too.
    lut_argb<32> half_alpha = offset_red(0.0f);
    for (argb_float& e : half_alpha.data)
        e.a = 3.0f;
    add_lut_difference(lut, half_alpha, 1.0f);
    EXPECT_EQ(lut.data[123].a, 1.0f);
}

TEST(AddLutDifference, WeightZeroAndNanLeaveNoNan)
{
    lut_argb<32> lut;
    const lut_argb<32> before = lut;
    add_lut_difference(lut, offset_red(0.3f), 0.0f);
    EXPECT_TRUE(lut.data == before.data);
    add_lut_difference(lut, offset_red(0.3f), std::nanf(""));
    for (const argb_float& e : lut.data)
        ASSERT_TRUE(e == e);
}

}  // namespace
}  // namespace vl1
