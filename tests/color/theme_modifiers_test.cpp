#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

#include "color/hsl.h"
#include "color/hueloom_theme_v1.h"
#include "color/lut_sampling.h"
#include "color/theme_modifiers.h"
#include "tests/color/float_edge_values.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

const std::size_t red_corner = lut_index(32, 31, 0, 0);
const std::size_t black = 0;

void expect_identity(const lut_argb<32>& lut, float tolerance)
{
    const lut_argb<32> identity;
    for (std::size_t i = 0; i < lut.data.size(); ++i) {
        ASSERT_NEAR(lut.data[i].r, identity.data[i].r, tolerance) << i;
        ASSERT_NEAR(lut.data[i].g, identity.data[i].g, tolerance) << i;
        ASSERT_NEAR(lut.data[i].b, identity.data[i].b, tolerance) << i;
        ASSERT_EQ(lut.data[i].a, identity.data[i].a) << i;
    }
}

// The identity with every colour pushed: more red, less blue, a little lighter.
lut_argb<32> graded()
{
    return test::make_lut_32([](float r, float g, float b) {
        return argb_float{1.0f, std::min(1.0f, r / 31.0f * 0.8f + 0.2f), g / 31.0f * 0.9f, b / 31.0f * 0.5f};
    });
}

TEST(ThemeModifiers, HueTurnsTheShorterWayAndGreysKeepNoHue)
{
    struct entry_case {
        const char* what;
        std::size_t index;
        argb_float graded;
        float hue, chroma, luminance;
        argb_float expected;
    };
    const entry_case cases[] = {
        // The red corner holds cyan, 180 away: half of that clockwise is hue 90 (0.5, 1, 0);
        // counter-clockwise would have been 270 (0.5, 0, 1).
        {"half circle", red_corner, {1.0f, 0.0f, 1.0f, 1.0f}, 0.5f, 1.0f, 1.0f, {1.0f, 0.5f, 1.0f, 0.0f}},
        // Red (0) graded to 330: the change is -30, doubled to -60 = 300.
        {"shorter way", red_corner, {1.0f, 1.0f, 0.0f, 0.5f}, 2.0f, 1.0f, 1.0f, {1.0f, 1.0f, 0.0f, 1.0f}},
        // Black graded to grey 0.3: saturation stays 0, lightness change doubled to 0.6.
        {"grey", black, {0.25f, 0.3f, 0.3f, 0.3f}, 1.7f, 2.0f, 2.0f, {0.25f, 0.6f, 0.6f, 0.6f}},
    };
    for (const entry_case& c : cases) {
        hueloom_theme_v1 theme;
        lut_argb<32> lut;
        lut.data[c.index] = c.graded;
        theme.apply_theme_modifiers(lut, c.hue, c.chroma, c.luminance);
        const argb_float got = lut.data[c.index];
        EXPECT_EQ(got.a, c.expected.a) << c.what;
        EXPECT_NEAR(got.r, c.expected.r, 1e-5f) << c.what;
        EXPECT_NEAR(got.g, c.expected.g, 1e-5f) << c.what;
        EXPECT_NEAR(got.b, c.expected.b, 1e-5f) << c.what;
    }
}

hueloom_theme_v1 two_slot_theme()
{
    hueloom_theme_v1 theme;
    auto lut = std::make_shared<const lut_argb<32>>(graded());
    theme.luts = {{lut, 0.0f}, {lut, 180.0f}};
    return theme;
}

TEST(ApplyTheme, StrengthZeroOrAnInconsistentThemeLeaveTheIdentity)
{
    lut_argb<32> lut;
    two_slot_theme().apply_theme(lut, 45.0f, 0.0f, 1.0f, 1.0f, 1.0f);
    expect_identity(lut, 2e-6f);

    // Three slots whose first gap is below 2 degrees: nothing at all is applied.
    hueloom_theme_v1 theme = two_slot_theme();
    theme.luts.push_back(theme.luts[0]);
    theme.luts[1].rotation = 1.0f;
    theme.post_processing_lut = std::make_shared<const lut_argb<32>>(graded());
    lut = lut_argb<32>();
    theme.apply_theme(lut, 90.0f, 1.0f, 2.0f, 2.0f, 2.0f);
    expect_identity(lut, 0.0f);
}

TEST(ApplyTheme, PostProcessingAppliesInFullAfterTheRefinements)
{
    hueloom_theme_v1 theme = two_slot_theme();
    const lut_argb<32> post = test::make_lut_32([](float r, float g, float b) {
        return argb_float{1.0f, 1.0f - r / 31.0f, g / 31.0f, b / 31.0f};
    });
    theme.post_processing_lut = std::make_shared<const lut_argb<32>>(post);
    lut_argb<32> lut;
    // Refinements at 0 undo the theme entirely, so only the post-processing shows.
    theme.apply_theme(lut, 45.0f, 1.0f, 0.0f, 0.0f, 0.0f);
    EXPECT_NEAR(lut.data[0].r, 1.0f, 1e-5f);
    EXPECT_NEAR(lut.data[red_corner].r, 0.0f, 1e-5f);
    EXPECT_NEAR(lut.data[lut_index(32, 0, 31, 0)].g, 1.0f, 1e-5f);
}

// The refinement rule for one entry in its plainest form: both colours to HSL, each property's
// change scaled, the hue the shorter way round, back to RGB, clamped.
argb_float refined_by_rule(const argb_float& ref, const argb_float& cur, float hue, float chroma, float luminance)
{
    const auto clamp = [](float v) { return std::min(1.0f, std::max(0.0f, v)); };
    const hsl_float r = rgb_to_hsl(ref.r, ref.g, ref.b);
    const hsl_float c = rgb_to_hsl(cur.r, cur.g, cur.b);
    hsl_float t;
    t.s = clamp(r.s + (c.s - r.s) * chroma);
    t.l = clamp(r.l + (c.l - r.l) * luminance);
    const float cw = std::fmod(c.h + 360.0f - r.h, 360.0f);
    const float ccw = std::fmod(r.h + 360.0f - c.h, 360.0f);
    const float delta = cw <= ccw ? cw : -ccw;
    t.h = std::fmod(delta * hue + (r.h + 360.0f), 360.0f);
    const rgb_float rgb = hsl_to_rgb(t);
    return {cur.a, clamp(rgb.r), clamp(rgb.g), clamp(rgb.b)};
}

TEST(ThemeModifiers, EveryEntryGetsTheBitsOfTheRuleWhateverItHolds)
{
    // Tables of ordinary graded colours and of edge values (NaN, infinities, signed zeros,
    // values far outside 0..1), under neutral, ordinary and extreme factors.
    test::edge_float_source values(31);
    lut_argb<32> ordinary;
    for (argb_float& e : ordinary.data)
        e = {values.next(0.0f, 1.0f), values.next(0.0f, 1.0f), values.next(0.0f, 1.0f), values.next(0.0f, 1.0f)};
    lut_argb<32> wild;
    for (argb_float& e : wild.data)
        e = values.colour(-0.5f, 1.5f);
    const lut_argb<32> reference;
    const float factors[][3] = {{1.0f, 1.0f, 1.0f}, {1.3f, 0.8f, 1.15f}, {0.0f, 2.0f, 0.0f}, {2.0f, 0.0f, 2.0f},
                                {0.37f, 1.61f, 0.93f}, {-0.5f, 3.0f, 1e6f}};
    for (const lut_argb<32>& start : {ordinary, wild, graded()}) {
        for (const auto& f : factors) {
            std::vector<argb_float> expected(start.data.size());
            for (std::size_t i = 0; i < expected.size(); ++i)
                expected[i] = refined_by_rule(reference.data[i], start.data[i], f[0], f[1], f[2]);
            // Every width this CPU has, 1 to 16 entries at a time, and the pass the theme runs.
            for (const row_kernel_path path : all_row_kernel_paths) {
                lut_argb<32> lut = start;
                refine_theme_entries(lut, f[0], f[1], f[2], path);
                for (std::size_t i = 0; i < lut.data.size(); ++i)
                    ASSERT_TRUE(test::same_bits(lut.data[i], expected[i]))
                        << "entry " << i << " with factors " << f[0] << ", " << f[1] << ", " << f[2] << ", "
                        << row_kernel_name(path);
            }
            lut_argb<32> lut = start;
            hueloom_theme_v1().apply_theme_modifiers(lut, f[0], f[1], f[2]);
            ASSERT_EQ(std::memcmp(lut.data.data(), expected.data(), lut.data.size() * sizeof(argb_float)), 0);
        }
    }
}

}  // namespace
}  // namespace vl1
