#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "color/hueloom_theme_v1.h"
#include "tests/color/lut_test_tables.h"

namespace vl1 {
namespace {

std::shared_ptr<const lut_argb<32>> shared_lut(lut_argb<32> lut)
{
    return std::make_shared<const lut_argb<32>>(std::move(lut));
}

// A theme of slots at the given rotations; each slot's table is the identity with entry 0
// tagged by the slot's position, so a returned slot can be recognised.
hueloom_theme_v1 theme_at(std::initializer_list<float> rotations)
{
    hueloom_theme_v1 theme;
    float tag = 0.0f;
    for (const float rotation : rotations) {
        lut_argb<32> lut;
        lut.data[0].a = tag++;
        theme.luts.push_back({shared_lut(std::move(lut)), rotation});
    }
    return theme;
}

float tag_of(const theme_lut_slot& slot)
{
    return slot.lut ? slot.lut->data[0].a : -1.0f;
}

TEST(HueloomTheme, NewThemeHasVersionOneAndNoUid)
{
    const hueloom_theme_v1 theme;
    EXPECT_EQ(theme.uid, 0u);
    EXPECT_EQ(theme.version, 1u);
    EXPECT_TRUE(theme.luts.empty());
    EXPECT_EQ(theme.post_processing_lut, nullptr);
}

TEST(HueloomThemeNeighbours, AngleBelowAllSlotsWrapsToTheHighest)
{
    const neighbor_luts n = theme_at({10.0f, 20.0f}).get_neighbor_luts_by_angle(5.0f);
    EXPECT_EQ(n.lower.rotation, 20.0f);
    EXPECT_EQ(n.upper.rotation, 10.0f);
}

TEST(HueloomThemeNeighbours, AngleAboveAllSlotsWrapsToTheLowest)
{
    const neighbor_luts n = theme_at({300.0f, 20.0f, 120.0f}).get_neighbor_luts_by_angle(350.0f);
    EXPECT_EQ(n.lower.rotation, 300.0f);
    EXPECT_EQ(n.upper.rotation, 20.0f);
}

TEST(HueloomThemeNeighbours, NearestOnEachSideInAnyListOrder)
{
    const neighbor_luts n = theme_at({200.0f, 90.0f, 30.0f, 150.0f, 100.0f}).get_neighbor_luts_by_angle(120.0f);
    EXPECT_EQ(n.lower.rotation, 100.0f);
    EXPECT_EQ(n.upper.rotation, 150.0f);
}

TEST(HueloomThemeNeighbours, SlotAtTheAngleItselfIsNeither)
{
    const neighbor_luts n = theme_at({0.0f, 90.0f, 180.0f}).get_neighbor_luts_by_angle(90.0f);
    EXPECT_EQ(n.lower.rotation, 0.0f);
    EXPECT_EQ(n.upper.rotation, 180.0f);
}

TEST(HueloomThemeNeighbours, EarlierSlotWinsTies)
{
    const hueloom_theme_v1 theme = theme_at({50.0f, 200.0f, 50.0f, 200.0f});
    const neighbor_luts between = theme.get_neighbor_luts_by_angle(100.0f);
    EXPECT_EQ(tag_of(between.lower), 0.0f);
    EXPECT_EQ(tag_of(between.upper), 1.0f);
    const neighbor_luts wrapped = theme.get_neighbor_luts_by_angle(10.0f);
    EXPECT_EQ(tag_of(wrapped.lower), 1.0f);
    EXPECT_EQ(tag_of(wrapped.upper), 0.0f);
}

TEST(HueloomThemeExactFit, FirstSlotWithinTheRelativeTolerance)
{
    const hueloom_theme_v1 theme = theme_at({100.0f, 300.0f, 300.002f});
    EXPECT_EQ(tag_of(theme.get_exact_fit_if_exists_by_angle(300.0f)), 1.0f);
    EXPECT_EQ(tag_of(theme.get_exact_fit_if_exists_by_angle(300.002f)), 1.0f);
    // At 300 the tolerance is about 0.003 degrees.
    EXPECT_EQ(tag_of(theme.get_exact_fit_if_exists_by_angle(299.996f)), -1.0f);
    const theme_lut_slot none = theme.get_exact_fit_if_exists_by_angle(200.0f);
    EXPECT_EQ(none.lut, nullptr);
    EXPECT_EQ(none.rotation, -1.0f);
}

TEST(HueloomThemeFloatEqual, AbsoluteNearZeroRelativeElsewhere)
{
    EXPECT_TRUE(hueloom_theme_v1::floatEqual(0.0f, 1e-5f));
    EXPECT_FALSE(hueloom_theme_v1::floatEqual(0.0f, 2e-5f));
    EXPECT_TRUE(hueloom_theme_v1::floatEqual(1000.0f, 1000.009f));
    EXPECT_FALSE(hueloom_theme_v1::floatEqual(1000.0f, 1000.02f));
    EXPECT_FALSE(hueloom_theme_v1::floatEqual(1.0f, std::nanf("")));
}

TEST(HueloomThemeConsistency, OnlyTheFirstGapOfThreeOrMoreSlotsCounts)
{
    EXPECT_FALSE(theme_at({}).is_self_consistent());
    EXPECT_FALSE(theme_at({10.0f}).is_self_consistent());
    EXPECT_TRUE(theme_at({10.0f, 10.5f}).is_self_consistent());
    EXPECT_TRUE(theme_at({30.0f, 10.0f}).is_self_consistent());
    EXPECT_FALSE(theme_at({10.0f, 11.0f, 100.0f}).is_self_consistent());
    EXPECT_TRUE(theme_at({10.0f, 12.0f, 12.5f}).is_self_consistent());
    EXPECT_FALSE(theme_at({30.0f, 10.0f, 100.0f}).is_self_consistent());
}

}  // namespace
}  // namespace vl1

namespace vl1 {
namespace {

// A slot whose table deviates from the quotient identity by `offset` on one channel of
// every entry; entry 0 (black) then shows the weight the slot was applied with.
theme_lut_slot offset_slot(float rotation, float red, float green)
{
    lut_argb<32> lut = test::make_lut_32([red, green](float r, float g, float b) {
        return argb_float{1.0f, r / 31.0f + red, g / 31.0f + green, b / 31.0f};
    });
    return {shared_lut(std::move(lut)), rotation};
}

TEST(HueloomThemeBlending, AngleBelowAllSlotsBlendsAcrossZero)
{
    // Slots at 10 (red) and 20 (green), angle 5: lower is 20, upper is 10, span 350,
    // d_lower 345, d_upper 5: 5/350 of the lower and 345/350 of the upper.
    hueloom_theme_v1 theme;
    theme.luts = {offset_slot(10.0f, 0.7f, 0.0f), offset_slot(20.0f, 0.0f, 0.7f)};
    lut_argb<32> lut;
    theme.apply_theme_luts(lut, 5.0f, 1.0f);
    EXPECT_NEAR(lut.data[0].r, 0.7f * 345.0f / 350.0f, 1e-6f);
    EXPECT_NEAR(lut.data[0].g, 0.7f * 5.0f / 350.0f, 1e-6f);
}

TEST(HueloomThemeBlending, AngleBetweenTheLastAndFirstSlotCrossesThreeSixty)
{
    // 350 between 300 (red) and 20 (green): span 80, d_lower 50, d_upper 30.
    hueloom_theme_v1 theme;
    theme.luts = {offset_slot(300.0f, 0.8f, 0.0f), offset_slot(20.0f, 0.0f, 0.8f)};
    lut_argb<32> lut;
    theme.apply_theme_luts(lut, 350.0f, 0.5f);
    EXPECT_NEAR(lut.data[0].r, 0.8f * 30.0f / 80.0f * 0.5f, 1e-6f);
    EXPECT_NEAR(lut.data[0].g, 0.8f * 50.0f / 80.0f * 0.5f, 1e-6f);
}

TEST(HueloomThemeBlending, ExactFitUsesThatSlotAloneAtFullStrength)
{
    hueloom_theme_v1 theme;
    theme.luts = {offset_slot(0.0f, 0.6f, 0.0f), offset_slot(300.0f, 0.0f, 0.6f), offset_slot(330.0f, 0.3f, 0.3f)};
    lut_argb<32> lut;
    theme.apply_theme_luts(lut, 300.001f, 0.75f);
    EXPECT_EQ(lut.data[0].r, 0.0f);
    EXPECT_NEAR(lut.data[0].g, 0.6f * 0.75f, 1e-6f);
}

TEST(HueloomThemeBlending, StrengthZeroKeepsTheIdentity)
{
    hueloom_theme_v1 theme;
    theme.luts = {offset_slot(0.0f, 0.6f, 0.2f), offset_slot(180.0f, 0.1f, 0.6f)};
    lut_argb<32> lut;
    const lut_argb<32> identity;
    theme.apply_theme_luts(lut, 90.0f, 0.0f);
    EXPECT_TRUE(lut.data == identity.data);
}

TEST(HueloomThemeBlending, TwoSlotsAtOneAngleLeaveNoNanInTheTable)
{
    // Same rotation twice: span 0, the weights are 0/0. The clamp turns them into limits.
    hueloom_theme_v1 theme;
    theme.luts = {offset_slot(40.0f, 0.6f, 0.0f), offset_slot(40.0f, 0.0f, 0.6f)};
    lut_argb<32> lut;
    theme.apply_theme_luts(lut, 100.0f, 1.0f);
    for (const argb_float& e : lut.data)
        ASSERT_TRUE(e == e);
}

}  // namespace
}  // namespace vl1
