#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "color/argb_float_ops.h"
#include "color/lut_argb.h"

namespace vl1 {
namespace {

TEST(LutArgbIdentity, AxesAccumulateStepsOnTheSixteenBitScale)
{
    const lut_argb<32> lut;
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
}

TEST(LutArgbIdentity, FillIdentityRestoresInPlaceAndRefusesAWrongSize)
{
    lut_argb<32> lut;
    for (argb_float& e : lut.data)
        e = {0.5f, 0.25f, 0.75f, 0.125f};
    const argb_float* storage = lut.data.data();
    fill_identity(lut);
    EXPECT_EQ(lut.data.data(), storage);
    EXPECT_TRUE(lut.data == lut_argb<32>().data);
    lut.data.pop_back();
    EXPECT_THROW(fill_identity(lut), std::out_of_range);
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
