// The colour wheel: the mapping between a point and angle and strength, and the pad's mouse
// gestures as its listener (the editor, which makes one undo step per gesture) sees them.
#include <gtest/gtest.h>

#include "gui/color_wheel_math.h"
#include "gui/cvl_color_wheel_xy_pad.h"
#include "tests/gui/control_events.h"

namespace vl1::gui {
namespace {

using hueloom_test::mouse;
using hueloom_test::recording_listener;

wheel::polar polar_of(float x, float y, float max_radius = 1.0f)
{
    wheel::polar p{-1.0f, -1.0f};
    wheel::polar_from_value(wheel::pack({x, y}), max_radius, p);
    return p;
}

TEST(ColorWheelMath, PointsMapToAngleUpAndCounterClockwiseAndStrengthInPercent)
{
    EXPECT_EQ(wheel::pack({0.5f, 0.5f}), wheel::centre_value);
    const wheel::point corner = wheel::unpack(wheel::pack({1.0f, 0.0f}));
    EXPECT_FLOAT_EQ(corner.x, 1.0f);
    EXPECT_FLOAT_EQ(corner.y, 0.0f);

    EXPECT_NEAR(polar_of(0.25f, 0.25f).angle_degrees, 45.0f, 1e-4f);
    EXPECT_NEAR(polar_of(0.25f, 0.25f).strength_percent, 70.71f, 0.01f);
    EXPECT_NEAR(polar_of(0.75f, 0.25f).angle_degrees, 315.0f, 1e-4f);
    EXPECT_NEAR(polar_of(0.2f, 0.501f).angle_degrees, 90.0f, 0.5f);   // left
    EXPECT_NEAR(polar_of(0.501f, 0.9f).angle_degrees, 180.0f, 0.5f);  // down
    EXPECT_EQ(polar_of(0.1f, 0.1f, 0.5f).strength_percent, 100.0f);  // beyond the reach

    // On an axis through the centre, and at the centre, the last angle and strength stay.
    wheel::polar kept{123.0f, 45.0f};
    EXPECT_FALSE(wheel::polar_from_value(wheel::centre_value, 1.0f, kept));
    EXPECT_FALSE(wheel::polar_from_value(wheel::pack({0.5f, 0.1f}), 1.0f, kept));
    EXPECT_EQ(kept.angle_degrees, 123.0f);
    EXPECT_EQ(kept.strength_percent, 45.0f);

    // Full strength at angle 0 on a wheel 451 wide lands on the grid at the top of the circle.
    const float reach = wheel::max_radius_for(12.0, 2.5, 451.0);
    EXPECT_FLOAT_EQ(reach, (451.0f - 4.75f) / 451.0f);
    const wheel::point top = wheel::unpack(wheel::value_for_strength(0.0f, 100.0f, reach));
    EXPECT_FLOAT_EQ(top.x, 0.5f);
    EXPECT_FLOAT_EQ(top.y, 0.005f);

    // The marker never leaves the circle; only the round picture takes clicks.
    const wheel::point outside = wheel::marker_point(wheel::pack({1.0f, 0.5f}), 0.5f);
    EXPECT_NEAR(outside.x, 0.75f, 1e-4f);
    EXPECT_FALSE(wheel::hits(1, 1, 0, 0, 100, 100, 0.98f));
    EXPECT_TRUE(wheel::hits(50, 2, 0, 0, 100, 100, 0.98f));
}

TEST(ColorWheelPad, StrengthAndAngleGoThroughTheQuantisedPoint)
{
    CVLColorWheelXYPad pad(0, 0, 451, 451, nullptr, CVLControl::no_tag);
    EXPECT_FLOAT_EQ(pad.get_max_radius(), (451.0f - 4.75f) / 451.0f);

    pad.set_strength(80.0f);
    pad.set_angle(30.0f);
    EXPECT_NEAR(pad.get_angle(), 30.0f, 0.2f);
    EXPECT_NEAR(pad.get_strength(), 80.0f, 0.2f);
    const wheel::point p = wheel::unpack(pad.getValue());
    EXPECT_LT(p.x, 0.5f);  // 30 degrees counter-clockwise from up is left of the centre
    EXPECT_LT(p.y, 0.5f);

    const float angle = pad.get_angle();
    pad.set_strength(0.0f);
    EXPECT_EQ(pad.getValue(), wheel::centre_value);
    EXPECT_EQ(pad.get_angle(), angle);
}

TEST(ColorWheelPad, GesturesAreFramedOnceAndTheRightButtonResets)
{
    recording_listener heard;
    CVLColorWheelXYPad pad(10, 20, 400, 400, &heard, 7);

    // The corners of the square and the mouse wheel are left to what lies beneath.
    EXPECT_EQ(mouse(pad, hueloom_test::press, 1, 12, 22), 0);
    EXPECT_EQ(hueloom_test::wheel(pad, 210, 220, 1), 0);
    // At the centre a right click does nothing and isn't taken.
    EXPECT_EQ(mouse(pad, hueloom_test::press, 3, 210, 220), 0);
    EXPECT_EQ(heard.take(), "");

    // The point jumps to the press and follows the drag: the upper left quarter is 45 degrees.
    EXPECT_EQ(mouse(pad, hueloom_test::press, 1, 110, 320), 1);
    EXPECT_EQ(mouse(pad, hueloom_test::drag, 1, 110, 120), 1);
    EXPECT_EQ(mouse(pad, hueloom_test::release, 1, 110, 120), 1);
    EXPECT_EQ(heard.take(), "bvve");
    EXPECT_NEAR(pad.get_angle(), 45.0f, 0.5f);
    EXPECT_GT(pad.get_strength(), 60.0f);

    EXPECT_EQ(mouse(pad, hueloom_test::press, 3, 300, 200), 1);
    EXPECT_EQ(heard.take(), "bve");
    EXPECT_EQ(pad.getValue(), wheel::centre_value);
    EXPECT_EQ(pad.get_strength(), 0.0f);
    EXPECT_EQ(pad.get_angle(), 0.0f);
}

}  // namespace
}  // namespace vl1::gui
