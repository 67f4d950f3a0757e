// The HSL conversions: the scalar functions on known colours, and the vector forms and the
// remainder against them, bit for bit, in their baseline build on four lanes. The table-wide
// refinement test holds the AVX2 build of them to the scalar rule as well.
#include <fmt/core.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <string>
#include <vector>

#include "color/hsl.h"
#include "color/hsl_lanes.h"
#include "tests/color/float_edge_values.h"

namespace vl1 {
namespace {

using lanes = detail::lanes_t<4>;
namespace ops = detail::base_lanes;

std::string text(float v) { return fmt::format("{} (bits {:08x})", v, std::bit_cast<uint32_t>(v)); }

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

TEST(HslLanes, RemainderBy360MatchesFmodOnEveryRange)
{
    std::vector<float> inputs = {0.0f, -0.0f, 360.0f, -360.0f, 720.0f, -720.0f, 1080.0f, 1440.0f, -1440.0f,
                                 std::nextafter(1440.0f, 0.0f), std::nextafter(360.0f, 0.0f), 359.99997f,
                                 1e-40f, -1e-40f, 1e10f, -1e10f, std::numeric_limits<float>::infinity(),
                                 -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()};
    test::edge_float_source values(3);
    while (inputs.size() < 40000)
        inputs.push_back(values.next(-1600.0f, 1600.0f));
    for (std::size_t i = 0; i + 4 <= inputs.size(); i += 4) {
        lanes in;
        for (int k = 0; k < 4; ++k)
            in[k] = inputs[i + k];
        const lanes out = ops::fmod_360_lanes(in);
        for (int k = 0; k < 4; ++k)
            ASSERT_TRUE(test::same_result(out[k], std::fmod(in[k], 360.0f)))
                << "fmod of " << text(in[k]) << ": " << text(out[k]);
    }
}

TEST(HslLanes, RgbToHslAndBackMatchTheScalarConversions)
{
    test::edge_float_source values(17);
    const float hue_edges[] = {0.0f, 60.0f, 120.0f, 180.0f, 240.0f, 300.0f, 359.99997f, 360.0f, -0.0f, 720.0f};
    for (int i = 0; i < 16000; ++i) {
        lanes r, g, b, h, s, l;
        for (int k = 0; k < 4; ++k) {
            // Ties between channels decide the sector: make them common.
            r[k] = values.next();
            g[k] = (i + k) % 5 == 0 ? r[k] : values.next();
            b[k] = (i + k) % 7 == 0 ? g[k] : values.next();
            h[k] = (i + k) % 3 == 0 ? hue_edges[(i + k) % std::size(hue_edges)] : values.next(-30.0f, 400.0f);
            s[k] = (i + k) % 6 == 0 ? 0.0f : values.next();
            l[k] = (i + k) % 8 == 0 ? 0.5f : values.next();
        }
        const detail::hsl_lanes<lanes> hsl = ops::rgb_to_hsl_lanes(r, g, b);
        const detail::rgb_lanes<lanes> rgb = ops::hsl_to_rgb_lanes(detail::hsl_lanes<lanes>{h, s, l});
        for (int k = 0; k < 4; ++k) {
            const hsl_float e = rgb_to_hsl(r[k], g[k], b[k]);
            ASSERT_TRUE(test::same_result(hsl.h[k], e.h) && test::same_result(hsl.s[k], e.s) &&
                        test::same_result(hsl.l[k], e.l))
                << "rgb " << text(r[k]) << ", " << text(g[k]) << ", " << text(b[k]) << ": h " << text(hsl.h[k])
                << " s " << text(hsl.s[k]) << " l " << text(hsl.l[k]);
            const rgb_float c = hsl_to_rgb(hsl_float{h[k], s[k], l[k]});
            ASSERT_TRUE(test::same_result(rgb.r[k], c.r) && test::same_result(rgb.g[k], c.g) &&
                        test::same_result(rgb.b[k], c.b))
                << "hsl " << text(h[k]) << ", " << text(s[k]) << ", " << text(l[k]) << ": r " << text(rgb.r[k])
                << " g " << text(rgb.g[k]) << " b " << text(rgb.b[k]);
        }
    }
}

}  // namespace
}  // namespace vl1
