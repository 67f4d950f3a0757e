// The test chart: its patches, sweep and ramp as generated, and the command that writes it.
#include "tools/hueloom_chart/test_chart.h"

#include "tests/support/test_paths.h"
#include "tests/tools/render_test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <set>

namespace {

namespace fs = std::filesystem;
using namespace vl1::chart_tool;

TEST(test_chart, PatchesAreSolidDistinctAndInsideTheChart)
{
    const chart_image chart = make_test_chart(640, 360);
    const auto patches = chart_patches(640, 360);
    ASSERT_EQ(patches.size(), 6u + 6u + 11u);
    std::set<std::array<float, 3>> colours;
    for (const auto& p : patches) {
        SCOPED_TRACE(p.name);
        ASSERT_LT(p.x1, p.x2);
        ASSERT_LT(p.y1, p.y2);
        ASSERT_LE(p.x2, chart.width);
        ASSERT_LE(p.y2, chart.height);
        for (int y = p.y1; y < p.y2; ++y) {
            for (int x = p.x1; x < p.x2; ++x) {
                const float* v = chart.pixel(x, y);
                ASSERT_EQ((std::array<float, 3>{v[0], v[1], v[2]}), p.colour) << x << "," << y;
            }
        }
        colours.insert(p.colour);
    }
    EXPECT_EQ(colours.size(), patches.size());
    // Skin patches run from light to deep, each a warm colour: red above green above blue.
    for (int i = 6; i < 12; ++i) {
        const auto& c = patches[i].colour;
        EXPECT_GT(c[0], c[1]);
        EXPECT_GT(c[1], c[2]);
        if (i > 6) {
            EXPECT_LT(c[0], patches[i - 1].colour[0]);
        }
    }
}

TEST(test_chart, RampRisesAndSweepTurnsOnceAroundTheHues)
{
    const chart_image chart = make_test_chart(512, 256);
    const chart_band ramp = grey_ramp_band(512, 256);
    EXPECT_EQ(chart.pixel(ramp.x1, ramp.y1)[0], 0.0f);
    EXPECT_EQ(chart.pixel(ramp.x2 - 1, ramp.y1)[0], 1.0f);
    for (int x = ramp.x1 + 1; x < ramp.x2; ++x) {
        const float* v = chart.pixel(x, ramp.y1);
        ASSERT_GT(v[0], chart.pixel(x - 1, ramp.y1)[0]);
        ASSERT_TRUE(v[0] == v[1] && v[1] == v[2]);
    }
    const chart_band sweep = hue_sweep_band(512, 256);
    std::optional<double> previous;
    double turned = 0.0;
    for (int x = sweep.x1; x < sweep.x2; ++x) {
        const float* v = chart.pixel(x, sweep.y1);
        const double hue = std::atan2(std::sqrt(3.0) * (v[1] - v[2]), 2.0 * v[0] - v[1] - v[2]);
        if (previous) {
            double step = hue - *previous;
            if (step < -M_PI) step += 2 * M_PI;
            ASSERT_GE(step, 0.0) << "hue runs one way at column " << x;
            turned += step;
        }
        previous = hue;
    }
    EXPECT_NEAR(turned, 2 * M_PI, 0.05);
    // Saturation falls towards the bottom of the sweep.
    const float* top = chart.pixel(sweep.x1 + 1, sweep.y1);
    const float* bottom = chart.pixel(sweep.x1 + 1, sweep.y2 - 1);
    EXPECT_GT(top[0] - top[2], bottom[0] - bottom[2]);
}

TEST(chart_command, WritesTheChartInTheFormatsDepth)
{
    const fs::path dir = hueloom_test::make_temp_dir("chart");
    struct { const char* name; OIIO::TypeDesc depth; } cases[] = {
        {"c.exr", OIIO::TypeDesc::HALF}, {"c.tif", OIIO::TypeDesc::UINT16}, {"c.png", OIIO::TypeDesc::UINT8}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto r = render_test::run_chart({(dir / c.name).string(), "--width", "200", "--height", "120"});
        ASSERT_EQ(r.exit_code, 0) << r.err;
        const auto p = render_test::read_pixels(dir / c.name);
        EXPECT_EQ(p.width, 200);
        EXPECT_EQ(p.height, 120);
        EXPECT_EQ(p.format, c.depth);
        const auto red = chart_patches(200, 120).front();
        EXPECT_EQ(p.at(red.x1, red.y1)[0], 1.0f);
        EXPECT_EQ(p.at(red.x1, red.y1)[1], 0.0f);
    }
    EXPECT_EQ(render_test::read_pixels(dir / "c.png").header.get_string_attribute("oiio:ColorSpace"), "sRGB");
    EXPECT_EQ(render_test::run_chart({(dir / "d.png").string(), "--width", "20"}).exit_code, 2);
    EXPECT_EQ(render_test::run_chart({(dir / "d.png").string(), "--height"}).exit_code, 2);
    EXPECT_EQ(render_test::run_chart({}).exit_code, 2);
    EXPECT_EQ(render_test::run_chart({(dir / "no" / "d.png").string()}).exit_code, 1);
    EXPECT_FALSE(fs::exists(dir / "d.png"));
}

}  // namespace
