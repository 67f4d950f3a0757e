#include <gtest/gtest.h>

#include <cmath>

#include "color/hsl.h"

namespace vl1 {
namespace {

TEST(Hsl, KnownColoursBothWaysAndARoundTripOfAGrid)
{
    struct known {
        float r, g, b, h, s, l;
    };
    const known cases[] = {
        {1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.5f},
        {1.0f, 1.0f, 0.0f, 60.0f, 1.0f, 0.5f},
        {0.0f, 1.0f, 0.0f, 120.0f, 1.0f, 0.5f},
        {0.0f, 1.0f, 1.0f, 180.0f, 1.0f, 0.5f},
        {0.0f, 0.0f, 1.0f, 240.0f, 1.0f, 0.5f},
        {0.5f, 0.0f, 1.0f, 270.0f, 1.0f, 0.5f},
        // Red highest with blue above green wraps into the upper half of the circle.
        {1.0f, 0.0f, 0.5f, 330.0f, 1.0f, 0.5f},
        // Above half lightness S = d / (2 - max - min), below it S = d / (max + min).
        {1.0f, 0.5f, 0.5f, 0.0f, 1.0f, 0.75f},
        {0.2f, 0.1f, 0.1f, 0.0f, 1.0f / 3.0f, 0.15f},
        // Grey has no hue and no saturation.
        {0.3f, 0.3f, 0.3f, 0.0f, 0.0f, 0.3f},
    };
    for (const known& c : cases) {
        SCOPED_TRACE(testing::Message() << c.r << " " << c.g << " " << c.b);
        const hsl_float got = rgb_to_hsl(c.r, c.g, c.b);
        EXPECT_NEAR(got.h, c.h, 1e-4f);
        EXPECT_NEAR(got.s, c.s, 1e-6f);
        EXPECT_NEAR(got.l, c.l, 1e-6f);
        const rgb_float back = hsl_to_rgb({c.h, c.s, c.l});
        EXPECT_NEAR(back.r, c.r, 2e-6f);
        EXPECT_NEAR(back.g, c.g, 2e-6f);
        EXPECT_NEAR(back.b, c.b, 2e-6f);
    }
    EXPECT_EQ(hsl_to_rgb({77.0f, 0.0f, 0.4f}).g, 0.4f) << "a grey comes back exactly whatever its hue";

    for (float r = 0.0f; r <= 1.0f; r += 0.125f)
        for (float g = 0.0f; g <= 1.0f; g += 0.25f)
            for (float b = 0.0f; b <= 1.0f; b += 0.1875f) {
                const rgb_float back = hsl_to_rgb(rgb_to_hsl(r, g, b));
                ASSERT_TRUE(std::abs(back.r - r) <= 2e-6f && std::abs(back.g - g) <= 2e-6f &&
                            std::abs(back.b - b) <= 2e-6f)
                    << r << " " << g << " " << b << " came back as " << back.r << " " << back.g << " " << back.b;
            }
}

}  // namespace
}  // namespace vl1
