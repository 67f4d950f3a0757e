// The four-lane HSL conversions and remainder against the scalar functions, bit for bit.
#include <fmt/core.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "color/hsl.h"
#include "color/hsl_sse2.h"
#include "tests/color/float_edge_values.h"

namespace vl1 {
namespace {

using detail::hsl_lanes;
using detail::rgb_lanes;

struct four {
    float v[4];
};

four lanes_of(__m128 x)
{
    four f;
    _mm_storeu_ps(f.v, x);
    return f;
}

__m128 lanes(const float (&v)[4]) { return _mm_loadu_ps(v); }

std::string text(float v) { return fmt::format("{} (bits {:08x})", v, std::bit_cast<uint32_t>(v)); }

TEST(HslSse2, RemainderBy360MatchesFmodOnEveryRange)
{
    std::vector<float> inputs = {0.0f, -0.0f, 360.0f, -360.0f, 720.0f, -720.0f, 1080.0f, 1440.0f, -1440.0f,
                                 std::nextafter(1440.0f, 0.0f), std::nextafter(360.0f, 0.0f), 359.99997f,
                                 1e-40f, -1e-40f, 1e10f, -1e10f, std::numeric_limits<float>::infinity(),
                                 -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()};
    test::edge_float_source values(3);
    for (int i = 0; i < 100000; ++i)
        inputs.push_back(values.next(-1600.0f, 1600.0f));
    while (inputs.size() % 4 != 0)
        inputs.push_back(1.0f);
    for (std::size_t i = 0; i < inputs.size(); i += 4) {
        const float in[4] = {inputs[i], inputs[i + 1], inputs[i + 2], inputs[i + 3]};
        const four out = lanes_of(detail::fmod_360_ps(lanes(in)));
        for (int k = 0; k < 4; ++k)
            ASSERT_TRUE(test::same_result(out.v[k], std::fmod(in[k], 360.0f)))
                << "fmod of " << text(in[k]) << ": " << text(out.v[k]);
    }
}

TEST(HslSse2, RgbToHslMatchesTheScalarConversion)
{
    test::edge_float_source values(17);
    for (int i = 0; i < 100000; ++i) {
        float r[4], g[4], b[4];
        for (int k = 0; k < 4; ++k) {
            // Ties between channels decide the sector: make them common.
            r[k] = values.next();
            g[k] = (i + k) % 5 == 0 ? r[k] : values.next();
            b[k] = (i + k) % 7 == 0 ? g[k] : values.next();
        }
        const hsl_lanes out = detail::rgb_to_hsl_ps(lanes(r), lanes(g), lanes(b));
        const four h = lanes_of(out.h), s = lanes_of(out.s), l = lanes_of(out.l);
        for (int k = 0; k < 4; ++k) {
            const hsl_float expected = rgb_to_hsl(r[k], g[k], b[k]);
            ASSERT_TRUE(test::same_result(h.v[k], expected.h) && test::same_result(s.v[k], expected.s) &&
                        test::same_result(l.v[k], expected.l))
                << "rgb " << text(r[k]) << ", " << text(g[k]) << ", " << text(b[k]) << ": h " << text(h.v[k])
                << " s " << text(s.v[k]) << " l " << text(l.v[k]) << ", scalar h " << text(expected.h) << " s "
                << text(expected.s) << " l " << text(expected.l);
        }
    }
}

TEST(HslSse2, HslToRgbMatchesTheScalarConversion)
{
    test::edge_float_source values(23);
    const float hue_edges[] = {0.0f, 60.0f, 120.0f, 180.0f, 240.0f, 300.0f, 359.99997f, 360.0f, -0.0f, 720.0f};
    for (int i = 0; i < 100000; ++i) {
        float h[4], s[4], l[4];
        for (int k = 0; k < 4; ++k) {
            h[k] = (i + k) % 3 == 0 ? hue_edges[(i + k) % std::size(hue_edges)] : values.next(-30.0f, 400.0f);
            s[k] = (i + k) % 6 == 0 ? 0.0f : values.next();
            l[k] = (i + k) % 8 == 0 ? 0.5f : values.next();
        }
        const rgb_lanes out = detail::hsl_to_rgb_ps(hsl_lanes{lanes(h), lanes(s), lanes(l)});
        const four r = lanes_of(out.r), g = lanes_of(out.g), b = lanes_of(out.b);
        for (int k = 0; k < 4; ++k) {
            const rgb_float expected = hsl_to_rgb(hsl_float{h[k], s[k], l[k]});
            ASSERT_TRUE(test::same_result(r.v[k], expected.r) && test::same_result(g.v[k], expected.g) &&
                        test::same_result(b.v[k], expected.b))
                << "hsl " << text(h[k]) << ", " << text(s[k]) << ", " << text(l[k]) << ": r " << text(r.v[k])
                << " g " << text(g.v[k]) << " b " << text(b.v[k]) << ", scalar r " << text(expected.r) << " g "
                << text(expected.g) << " b " << text(expected.b);
        }
    }
}

}  // namespace
}  // namespace vl1
