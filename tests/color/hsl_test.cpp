#include <gtest/gtest.h>

#include "color/hsl.h"

namespace vl1 {
namespace {

TEST(RgbToHsl, HueSaturationAndLightnessOfKnownColours)
{
    struct known {
        float r, g, b, h, s, l;
    };
    const known cases[] = {
        {1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.5f},
        {0.0f, 1.0f, 0.0f, 120.0f, 1.0f, 0.5f},
        {0.0f, 0.0f, 1.0f, 240.0f, 1.0f, 0.5f},
        {0.0f, 1.0f, 1.0f, 180.0f, 1.0f, 0.5f},
        // Red highest with blue above green wraps into the upper half of the circle.
        {1.0f, 0.0f, 0.5f, 330.0f, 1.0f, 0.5f},
        // Above half lightness S = d / (2 - max - min), below it S = d / (max + min).
        {1.0f, 0.5f, 0.5f, 0.0f, 1.0f, 0.75f},
        {0.2f, 0.1f, 0.1f, 0.0f, 1.0f / 3.0f, 0.15f},
        // Grey has no hue and no saturation.
        {0.3f, 0.3f, 0.3f, 0.0f, 0.0f, 0.3f},
    };
    for (const known& c : cases) {
        const hsl_float got = rgb_to_hsl(c.r, c.g, c.b);
        EXPECT_NEAR(got.h, c.h, 1e-4f) << c.r << " " << c.g << " " << c.b;
        EXPECT_NEAR(got.s, c.s, 1e-6f) << c.r << " " << c.g << " " << c.b;
        EXPECT_NEAR(got.l, c.l, 1e-6f) << c.r << " " << c.g << " " << c.b;
    }
}

TEST(HslToRgb, PrimariesAndGreysComeBackExactly)
{
    const rgb_float green = hsl_to_rgb({120.0f, 1.0f, 0.5f});
    EXPECT_EQ(green.r, 0.0f);
    EXPECT_EQ(green.g, 1.0f);
    EXPECT_EQ(green.b, 0.0f);
    const rgb_float red = hsl_to_rgb({0.0f, 1.0f, 0.5f});
    EXPECT_EQ(red.r, 1.0f);
    EXPECT_EQ(red.g, 0.0f);
    // Blue sits at 1 - 0.33333334, just below the 0.6666667 boundary: a tiny residue remains.
    EXPECT_GT(red.b, 0.0f);
    EXPECT_LT(red.b, 1e-6f);
    const rgb_float grey = hsl_to_rgb({77.0f, 0.0f, 0.4f});
    EXPECT_EQ(grey.r, 0.4f);
    EXPECT_EQ(grey.g, 0.4f);
    EXPECT_EQ(grey.b, 0.4f);
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
