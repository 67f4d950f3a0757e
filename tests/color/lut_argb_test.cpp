#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "color/argb_float_ops.h"
#include "color/lut_argb.h"

namespace vl1 {
namespace {

TEST(LutArgbIdentity, StepAndScaleConstantsHaveTheirBits)
{
    EXPECT_EQ(std::bit_cast<uint32_t>(2114.0322f), 0x45042084u);
    EXPECT_EQ(std::bit_cast<uint32_t>(1.5259022e-5f), 0x37800080u);
}

TEST(LutArgbIdentity, FillAccumulatesOnTheSixteenBitScale)
{
    const lut_argb<32> lut;
    ASSERT_EQ(lut.data.size(), 32768u);

    // Grid index 1 on each axis: one step of the accumulator, scaled in float.
    const float one = 2114.0322f * 1.5259022e-5f;
    EXPECT_EQ(lut.data[1], (argb_float{1.0f, 0.0f, 0.0f, one}));
    EXPECT_EQ(lut.data[32], (argb_float{1.0f, 0.0f, one, 0.0f}));
    EXPECT_EQ(lut.data[1024], (argb_float{1.0f, one, 0.0f, 0.0f}));

    // Grid index 2 is the sum of two steps, not 2 * step, scaled once.
    const float s2 = 2114.0322f + 2114.0322f;
    EXPECT_EQ(lut.data[2].b, s2 * 1.5259022e-5f);

    EXPECT_EQ(lut.data[0], (argb_float{1.0f, 0.0f, 0.0f, 0.0f}));
    // 31 accumulated steps reach 65534.977, just short of 65535, so the top grid point is
    // scaled like the others and lands 3.6e-7 below 1.0 (bits 0x3F7FFFFA).
    const argb_float top = lut.data[32767];
    EXPECT_EQ(std::bit_cast<uint32_t>(top.r), 0x3F7FFFFAu);
    EXPECT_EQ(top, (argb_float{1.0f, top.r, top.r, top.r}));
}

TEST(LutArgbIdentity, AxisValuesMatchTheAccumulatorRuleEverywhere)
{
    const lut_argb<32> lut;
    float s = 0.0f;
    for (std::size_t i = 0; i < 32; ++i, s += 2114.0322f) {
        const float expected = s * 1.5259022e-5f;
        EXPECT_EQ(lut.data[lut_index(32, i, 0, 0)].r, expected) << i;
        EXPECT_EQ(lut.data[lut_index(32, 0, i, 0)].g, expected) << i;
        EXPECT_EQ(lut.data[lut_index(32, 0, 0, i)].b, expected) << i;
        EXPECT_NEAR(expected, static_cast<float>(i) / 31.0f, 4e-7f) << i;
    }
}

TEST(LutArgbIdentity, FillIdentityRestoresInPlace)
{
    lut_argb<32> lut;
    const lut_argb<32> reference;
    for (argb_float& e : lut.data)
        e = {0.5f, 0.25f, 0.75f, 0.125f};
    const argb_float* storage = lut.data.data();
    fill_identity(lut);
    EXPECT_EQ(lut.data.data(), storage);
    EXPECT_TRUE(lut.data == reference.data);
}

TEST(LutArgbIdentity, FillIdentityRefusesATableOfWrongSize)
{
    lut_argb<32> lut;
    lut.data.pop_back();
    EXPECT_THROW(fill_identity(lut), std::out_of_range);
}

TEST(LutArgbVariable, DefaultIsSeventeenPointsOfZero)
{
    const lut_argb_variable lut;
    EXPECT_EQ(lut.edge, 17u);
    ASSERT_EQ(lut.data.size(), 4913u);
    for (const argb_float& e : lut.data)
        ASSERT_EQ(e, (argb_float{0.0f, 0.0f, 0.0f, 0.0f}));
    EXPECT_TRUE(lut.text.empty());
}

TEST(LutArgbVariable, SeventeenPointIdentityStepsBySixteenths)
{
    const lut_argb_variable lut = make_identity_17();
    ASSERT_EQ(lut.edge, 17u);
    ASSERT_EQ(lut.data.size(), 4913u);
    EXPECT_EQ(lut.data[lut_index(17, 8, 4, 16)], (argb_float{1.0f, 0.5f, 0.25f, 1.0f}));
    EXPECT_EQ(lut.data[lut_index(17, 1, 0, 0)], (argb_float{1.0f, 0.0625f, 0.0f, 0.0f}));
    EXPECT_EQ(lut.data.back(), (argb_float{1.0f, 1.0f, 1.0f, 1.0f}));
}

}  // namespace
}  // namespace vl1
