#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "color/hsl.h"

namespace vl1 {
namespace {

void expect_hsl(const hsl_float& got, float h, float s, float l)
{
    EXPECT_NEAR(got.h, h, 1e-4f);
    EXPECT_NEAR(got.s, s, 1e-6f);
    EXPECT_NEAR(got.l, l, 1e-6f);
}

TEST(RgbToHsl, PrimariesAndTheirMixes)
{
    expect_hsl(rgb_to_hsl(1.0f, 0.0f, 0.0f), 0.0f, 1.0f, 0.5f);
    expect_hsl(rgb_to_hsl(0.0f, 1.0f, 0.0f), 120.0f, 1.0f, 0.5f);
    expect_hsl(rgb_to_hsl(0.0f, 0.0f, 1.0f), 240.0f, 1.0f, 0.5f);
    expect_hsl(rgb_to_hsl(0.0f, 1.0f, 1.0f), 180.0f, 1.0f, 0.5f);
    // Red highest with blue above green wraps into the upper half of the circle.
    expect_hsl(rgb_to_hsl(1.0f, 0.0f, 0.5f), 330.0f, 1.0f, 0.5f);
}

TEST(RgbToHsl, SaturationUsesTheLightSideFormulaAboveHalf)
{
    // L = 0.75, d = 0.5: S = d / (2 - max - min) = 1.0; below half S = d / (max + min).
    expect_hsl(rgb_to_hsl(1.0f, 0.5f, 0.5f), 0.0f, 1.0f, 0.75f);
    expect_hsl(rgb_to_hsl(0.2f, 0.1f, 0.1f), 0.0f, 1.0f / 3.0f, 0.15f);
}

TEST(RgbToHsl, GreyHasNoHueAndNoSaturation)
{
    const hsl_float grey = rgb_to_hsl(0.3f, 0.3f, 0.3f);
    EXPECT_EQ(grey.h, 0.0f);
    EXPECT_EQ(grey.s, 0.0f);
    EXPECT_EQ(grey.l, (0.3f + 0.3f) * 0.5f);
}

TEST(HslToRgb, PrimariesComeBackExactly)
{
    const rgb_float green = hsl_to_rgb({120.0f, 1.0f, 0.5f});
    EXPECT_EQ(green.r, 0.0f);
    EXPECT_EQ(green.g, 1.0f);
    EXPECT_EQ(green.b, 0.0f);
    const rgb_float red = hsl_to_rgb({0.0f, 1.0f, 0.5f});
    EXPECT_EQ(red.r, 1.0f);
    EXPECT_EQ(red.g, 0.0f);
    // Blue sits at u = 1 - 0.33333334 = 0.66666663, just below the 0.6666667 boundary, so a
    // residue of the falling edge remains: (0.6666667 - u) * 6.
    const float u = -0.33333334f + 1.0f;
    EXPECT_EQ(red.b, (0.6666667f - u) * 6.0f);
    EXPECT_GT(red.b, 0.0f);
}

TEST(HslToRgb, ZeroSaturationGivesGreyOfTheLightness)
{
    const rgb_float grey = hsl_to_rgb({77.0f, 0.0f, 0.4f});
    EXPECT_EQ(grey.r, 0.4f);
    EXPECT_EQ(grey.g, 0.4f);
    EXPECT_EQ(grey.b, 0.4f);
}

TEST(HslToRgb, ThirdOfTheCircleIsTheFloatNearestToOneThird)
{
    EXPECT_EQ(std::bit_cast<uint32_t>(0.33333334f), std::bit_cast<uint32_t>(1.0f / 3.0f));
    EXPECT_EQ(std::bit_cast<uint32_t>(0.16666667f), std::bit_cast<uint32_t>(1.0f / 6.0f));
}

TEST(HslRoundTrip, ColoursSurviveWithinFloatRounding)
{
    for (float r = 0.0f; r <= 1.0f; r += 0.125f)
        for (float g = 0.0f; g <= 1.0f; g += 0.25f)
            for (float b = 0.0f; b <= 1.0f; b += 0.1875f) {
                const rgb_float back = hsl_to_rgb(rgb_to_hsl(r, g, b));
                ASSERT_NEAR(back.r, r, 2e-6f) << r << " " << g << " " << b;
                ASSERT_NEAR(back.g, g, 2e-6f) << r << " " << g << " " << b;
                ASSERT_NEAR(back.b, b, 2e-6f) << r << " " << g << " " << b;
            }
}

}  // namespace
}  // namespace vl1
