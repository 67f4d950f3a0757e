// The effect component through its public interface: the table it builds at
// each render setup, bypass, the theme choice and the export interface.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>

#include "color/lut_sampling.h"
#include "tests/effect/effect_test_support.h"
#include "themes/hueloom_vault.h"

namespace vl1 {
namespace {

using effect_test::add_to_collection;
using effect_test::make_component;
using effect_test::make_theme;
using effect_test::same_bits;
using effect_test::set_param;
using effect_test::table_after_setup;

/// Largest difference of any channel; the neutral refinements (1, 1, 1) pass the table
/// through HSL and back, which may move the last bits.
float max_abs_difference(const std::vector<argb_float>& a, const std::vector<argb_float>& b)
{
    float worst = 0.0f;
    for (std::size_t i = 0; i < a.size(); ++i)
        worst = std::max({worst, std::abs(a[i].r - b[i].r), std::abs(a[i].g - b[i].g), std::abs(a[i].b - b[i].b),
                          std::abs(a[i].a - b[i].a)});
    return worst;
}

TEST(HueloomTable, MatchesTheThemePipelineWithTheWheelReversedAndPercentsScaled)
{
    const auto theme = make_theme(0x7e570001, "Pipeline", true);
    auto fx = make_component(theme);
    set_param(*fx, "Angle", 45.0f);
    set_param(*fx, "Strength", 80.0f);
    set_param(*fx, "Hue", 150.0f);
    set_param(*fx, "Chroma", 50.0f);
    set_param(*fx, "Luminance", 120.0f);

    lut_argb<32> expected;
    theme->apply_theme(expected, 315.0f, 0.8f, 1.5f, 0.5f, 1.2f);
    EXPECT_TRUE(same_bits(table_after_setup(*fx).data, expected.data));

    EXPECT_FALSE(fx->is_identity());
    EXPECT_EQ(fx->table_builds(), 1u);
}

TEST(HueloomTable, IsRebuiltOnlyWhenParametersThemeOrBypassChanged)
{
    auto fx = make_component();
    const auto original = make_theme(0x7e570011, "Cached", true);
    const auto theme = add_to_collection(original);
    fx->set_current_theme_by_uuid(theme->uid);
    set_param(*fx, "Strength", 70.0f);
    set_param(*fx, "Angle", 30.0f);
    const auto first = table_after_setup(*fx);
    std::size_t builds = fx->table_builds();

    // Same inputs: the table is reused, and a value set again to itself changes nothing.
    set_param(*fx, "Angle", 30.0f);
    EXPECT_TRUE(same_bits(table_after_setup(*fx).data, first.data));
    EXPECT_EQ(fx->table_builds(), builds);

    // Each input that changes, and changes back, builds the table anew with identical results.
    const auto changed_then_back = [&](const std::function<void()>& change, const std::function<void()>& back) {
        change();
        const auto other = table_after_setup(*fx);
        back();
        const auto again = table_after_setup(*fx);
        builds += 2;
        EXPECT_EQ(fx->table_builds(), builds);
        EXPECT_FALSE(same_bits(other.data, first.data));
        EXPECT_TRUE(same_bits(again.data, first.data));
    };
    changed_then_back([&] { set_param(*fx, "Angle", 30.5f); }, [&] { set_param(*fx, "Angle", 30.0f); });
    changed_then_back([&] { set_param(*fx, "Luminance", 140.0f); }, [&] { set_param(*fx, "Luminance", 100.0f); });
    changed_then_back([&] { fx->set_bypass(true); }, [&] { fx->set_bypass(false); });
    // Another theme object, even under the same uid and with other tables, is another theme.
    const auto replaced = add_to_collection(make_theme(0x7e570011, "Cached", false));
    changed_then_back([&] { fx->set_current_theme_by_uuid(replaced->uid); },
                      [&] { fx->set_current_theme_by_uuid(add_to_collection(original)->uid); });

    EXPECT_FALSE(fx->is_identity());
    fx->set_bypass(true);
    EXPECT_TRUE(fx->is_identity());
}

TEST(HueloomTable, ZeroStrengthLeavesOnlyThePostProcessingAndBypassNothing)
{
    const auto theme = make_theme(0x7e570002, "Post", true);
    auto fx = make_component(theme);

    lut_argb<32> post_only;
    theme->apply_post_processing(post_only);
    EXPECT_LT(max_abs_difference(table_after_setup(*fx).data, post_only.data), 1e-5f);

    set_param(*fx, "Strength", 100.0f);
    fx->set_bypass(true);
    EXPECT_TRUE(same_bits(table_after_setup(*fx).data, lut_argb<32>().data));
}

TEST(HueloomTable, AngleZeroAndThreeSixtyMeetOnTheWheel)
{
    const auto theme = make_theme(0x7e570003, "Wheel");
    auto fx = make_component(theme);
    set_param(*fx, "Strength", 100.0f);
    set_param(*fx, "Angle", 0.0f);
    const auto at_zero = table_after_setup(*fx);
    set_param(*fx, "Angle", 360.0f);
    const auto at_full = table_after_setup(*fx);
    // 360 lands exactly on the slot at 0; 0 reaches it through the neighbours with weight 1.
    lut_argb<32> slot_zero;
    theme->apply_theme_luts(slot_zero, 0.0f, 1.0f);
    EXPECT_LT(max_abs_difference(at_full.data, slot_zero.data), 1e-5f);
    EXPECT_LT(max_abs_difference(at_zero.data, slot_zero.data), 1e-5f);
    EXPECT_GT(max_abs_difference(at_zero.data, lut_argb<32>().data), 0.05f) << "the slot must show";
}

TEST(HueloomTable, UnknownThemeOrInconsistentThemeGivesTheIdentity)
{
    auto fx = make_component();
    set_param(*fx, "Strength", 100.0f);
    fx->set_current_theme_by_uuid(0x0badbeef);
    EXPECT_EQ(fx->get_current_theme_uuid(), 0u);
    EXPECT_EQ(fx->get_current_theme_name(), "");
    EXPECT_EQ(fx->get_current_wheel_background_data().first, nullptr);
    EXPECT_TRUE(same_bits(table_after_setup(*fx).data, lut_argb<32>().data));

    auto lonely = make_theme(0x7e570004, "Lonely");
    lonely->luts.resize(1);
    add_to_collection(lonely);
    fx->set_current_theme_by_uuid(lonely->uid);
    EXPECT_EQ(fx->get_current_theme_name(), "Lonely");
    EXPECT_TRUE(same_bits(table_after_setup(*fx).data, lut_argb<32>().data));
}

TEST(HueloomPixels, ProcessPixelSamplesTheTableTheExporterHandsOutAndKeepsAlpha)
{
    auto fx = make_component(make_theme(0x7e570005, "Pixels"));
    iobject* found = nullptr;
    ASSERT_TRUE(fx->query_interface("lut_exporter", &found));
    auto* exporter = dynamic_cast<lut_exporter*>(found);
    ASSERT_NE(exporter, nullptr);
    EXPECT_FALSE(exporter->get_lut(nullptr));
    set_param(*fx, "Strength", 60.0f);
    fx->notify(event(event_render_setup));
    // The exporter hands out the table of the current values, even of a change no render
    // has seen yet; the next render samples that same table.
    set_param(*fx, "Angle", 100.0f);
    lut_argb_variable table;
    table.text = "left over";
    ASSERT_TRUE(exporter->get_lut(&table));
    EXPECT_EQ(table.edge, 32u);
    EXPECT_TRUE(table.text.empty());
    fx->notify(event(event_render_setup));
    lut_argb<32> fixed;
    fixed.data = table.data;
    for (float v : {0.0f, 0.2f, 0.5f, 0.77f, 1.0f}) {
        const argb_float in{0.3f, v, 1.0f - v, v * 0.5f};
        argb_float out{};
        fx->process_pixel(0, 0, in, &out);
        const argb_float expected = sample_lut(fixed, in);
        EXPECT_EQ(std::memcmp(&out, &expected, sizeof out), 0);
        EXPECT_EQ(out.a, 0.3f);
    }
}

}  // namespace
}  // namespace vl1
