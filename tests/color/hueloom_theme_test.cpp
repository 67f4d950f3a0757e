#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "color/hueloom_theme_v1.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

std::shared_ptr<const lut_argb<32>> shared_lut(lut_argb<32> lut)
{
    return std::make_shared<const lut_argb<32>>(std::move(lut));
}

// A theme of slots at the given rotations; each slot's table is the identity with entry 0
// tagged by the slot's position, so a returned slot can be recognised.
hueloom_theme_v1 theme_at(const std::vector<float>& rotations)
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

TEST(HueloomThemeNeighbours, NearestSlotOnEachSideWrappingRoundTheCircle)
{
    struct neighbour_case {
        std::initializer_list<float> rotations;
        float angle, lower, upper;
    };
    const neighbour_case cases[] = {
        {{10.0f, 20.0f}, 5.0f, 20.0f, 10.0f},                               // below all: wraps to the highest
        {{300.0f, 20.0f, 120.0f}, 350.0f, 300.0f, 20.0f},                   // above all: wraps to the lowest
        {{200.0f, 90.0f, 30.0f, 150.0f, 100.0f}, 120.0f, 100.0f, 150.0f},  // any list order
        {{0.0f, 90.0f, 180.0f}, 90.0f, 0.0f, 180.0f},                      // a slot at the angle is neither
    };
    for (const neighbour_case& c : cases) {
        const neighbor_luts n = theme_at(c.rotations).get_neighbor_luts_by_angle(c.angle);
        EXPECT_EQ(n.lower.rotation, c.lower) << "angle " << c.angle;
        EXPECT_EQ(n.upper.rotation, c.upper) << "angle " << c.angle;
    }
    // Of slots at equal rotations the earlier one wins.
    const hueloom_theme_v1 theme = theme_at({50.0f, 200.0f, 50.0f, 200.0f});
    const neighbor_luts between = theme.get_neighbor_luts_by_angle(100.0f);
    EXPECT_EQ(tag_of(between.lower), 0.0f);
    EXPECT_EQ(tag_of(between.upper), 1.0f);
    const neighbor_luts wrapped = theme.get_neighbor_luts_by_angle(10.0f);
    EXPECT_EQ(tag_of(wrapped.lower), 1.0f);
    EXPECT_EQ(tag_of(wrapped.upper), 0.0f);
}

TEST(HueloomThemeExactFit, FirstSlotWithinAToleranceAbsoluteNearZeroAndRelativeElsewhere)
{
    const hueloom_theme_v1 theme = theme_at({100.0f, 300.0f, 300.002f, 0.0f});
    // At 300 the tolerance is about 0.003 degrees, at 0 it is 1e-5.
    const std::pair<float, float> fits[] = {{300.0f, 1.0f}, {300.002f, 1.0f}, {299.996f, -1.0f},
                                            {1e-5f, 3.0f},  {2e-5f, -1.0f},   {std::nanf(""), -1.0f}};
    for (const auto& [angle, tag] : fits)
        EXPECT_EQ(tag_of(theme.get_exact_fit_if_exists_by_angle(angle)), tag) << angle;
    const theme_lut_slot none = theme.get_exact_fit_if_exists_by_angle(200.0f);
    EXPECT_EQ(none.lut, nullptr);
    EXPECT_EQ(none.rotation, -1.0f);
}

TEST(HueloomThemeConsistency, TwoSlotsOrAFirstGapOfTwoDegrees)
{
    const std::pair<std::vector<float>, bool> cases[] = {
        {{}, false},
        {{10.0f}, false},
        {{10.0f, 10.5f}, true},
        {{30.0f, 10.0f}, true},
        {{10.0f, 11.0f, 100.0f}, false},
        {{10.0f, 12.0f, 12.5f}, true},
        {{30.0f, 10.0f, 100.0f}, false},
    };
    for (const auto& [rotations, consistent] : cases)
        EXPECT_EQ(theme_at(rotations).is_self_consistent(), consistent) << rotations.size() << " slots";
}

// A slot whose table deviates from the quotient identity by `red` and `green` on every
// entry; entry 0 (black) then shows the weight the slot was applied with.
theme_lut_slot offset_slot(float rotation, float red, float green)
{
    lut_argb<32> lut = test::make_lut_32([red, green](float r, float g, float b) {
        return argb_float{1.0f, r / 31.0f + red, g / 31.0f + green, b / 31.0f};
    });
    return {shared_lut(std::move(lut)), rotation};
}

TEST(HueloomThemeBlending, NeighboursWeighByTheirDistanceAcrossZeroAndStrengthScales)
{
    struct blend_case {
        std::vector<theme_lut_slot> slots;
        float angle, strength, red, green;
    };
    const blend_case cases[] = {
        // Angle 5 between 20 and 10 across zero: span 350, 5/350 of the lower, 345/350 of the upper.
        {{offset_slot(10.0f, 0.7f, 0.0f), offset_slot(20.0f, 0.0f, 0.7f)}, 5.0f, 1.0f, 0.7f * 345.0f / 350.0f,
         0.7f * 5.0f / 350.0f},
        // 350 between 300 and 20: span 80, d_lower 50, d_upper 30, at half strength.
        {{offset_slot(300.0f, 0.8f, 0.0f), offset_slot(20.0f, 0.0f, 0.8f)}, 350.0f, 0.5f, 0.8f * 30.0f / 80.0f * 0.5f,
         0.8f * 50.0f / 80.0f * 0.5f},
        // An exact fit uses that slot alone.
        {{offset_slot(0.0f, 0.6f, 0.0f), offset_slot(300.0f, 0.0f, 0.6f), offset_slot(330.0f, 0.3f, 0.3f)}, 300.001f,
         0.75f, 0.0f, 0.6f * 0.75f},
        // Strength zero keeps the identity.
        {{offset_slot(0.0f, 0.6f, 0.2f), offset_slot(180.0f, 0.1f, 0.6f)}, 90.0f, 0.0f, 0.0f, 0.0f},
    };
    for (const blend_case& c : cases) {
        hueloom_theme_v1 theme;
        theme.luts = c.slots;
        lut_argb<32> lut;
        theme.apply_theme_luts(lut, c.angle, c.strength);
        EXPECT_NEAR(lut.data[0].r, c.red, 1e-6f) << "angle " << c.angle;
        EXPECT_NEAR(lut.data[0].g, c.green, 1e-6f) << "angle " << c.angle;
    }
}

TEST(HueloomThemeBlending, EqualRotationsLeaveNoNan)
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
