// The slider's gestures as its listener (the editor, which makes one undo step per gesture)
// sees them.
#include <gtest/gtest.h>

#include "gui/cvl_rounded_grey_slider.h"
#include "tests/gui/control_events.h"

namespace vl1::gui {
namespace {

using hueloom_test::mouse;
using hueloom_test::recording_listener;

// A slider 300 wide whose handle edge runs from 0 to 200 points: one point is one unit of
// 0..200. No handle picture, so the handle is 0 wide and its middle is its edge.
struct slider_rig {
    recording_listener heard;
    CVLRoundedGreySlider slider{50, 10, 300, 40, &heard, 3, 0, 200, nullptr, "Hue"};
};

TEST(RoundedGreySlider, ADragJumpsFollowsAndIsOneGesture)
{
    slider_rig r;
    EXPECT_EQ(r.slider.getValue(), 100.0f);
    EXPECT_EQ(mouse(r.slider, hueloom_test::press, 1, 50 + 30, 30), 1);
    EXPECT_FLOAT_EQ(r.slider.getValue(), 30.0f);
    mouse(r.slider, hueloom_test::drag, 1, 50 + 60, 30);
    EXPECT_FLOAT_EQ(r.slider.getValue(), 60.0f);
    // Shift moves a tenth as far, and the handle doesn't jump back when Shift is let go.
    mouse(r.slider, hueloom_test::drag, 1, 50 + 80, 30, hueloom_test::shift);
    EXPECT_NEAR(r.slider.getValue(), 62.0f, 1e-4f);
    mouse(r.slider, hueloom_test::drag, 1, 50 + 90, 30);
    EXPECT_NEAR(r.slider.getValue(), 72.0f, 1e-4f);
    mouse(r.slider, hueloom_test::drag, 1, 50 + 900, 30);
    EXPECT_EQ(r.slider.getValue(), 200.0f);
    mouse(r.slider, hueloom_test::release, 1, 50 + 900, 30);
    EXPECT_EQ(r.heard.take(), "bvvvvve");
}

TEST(RoundedGreySlider, RightClickAltClickAndTheWheelAreOneGestureEach)
{
    slider_rig r;
    r.slider.setValue(37.0f);
    EXPECT_EQ(mouse(r.slider, hueloom_test::press, 3, 50 + 250, 30), 1);
    EXPECT_EQ(r.slider.getValue(), 100.0f);
    EXPECT_EQ(r.heard.take(), "bve");
    // At the default already: taken, but no empty step.
    EXPECT_EQ(mouse(r.slider, hueloom_test::press, 3, 50 + 10, 30), 1);
    EXPECT_EQ(r.heard.take(), "");

    r.slider.setValue(5.0f);
    EXPECT_EQ(mouse(r.slider, hueloom_test::press, 1, 50 + 180, 30, hueloom_test::alt), 1);
    EXPECT_EQ(r.slider.getValue(), 100.0f);
    EXPECT_EQ(r.heard.take(), "bve");

    EXPECT_EQ(hueloom_test::wheel(r.slider, 60, 30, -1), 1);  // up: more
    EXPECT_FLOAT_EQ(r.slider.getValue(), 102.0f);
    hueloom_test::wheel(r.slider, 60, 30, 3);
    EXPECT_FLOAT_EQ(r.slider.getValue(), 96.0f);
    r.slider.setValue(200.0f);
    hueloom_test::wheel(r.slider, 60, 30, -1);  // at the end already: no empty step
    EXPECT_EQ(r.heard.take(), "bvebve");

    r.slider.set_wheel_enabled(false);
    EXPECT_EQ(hueloom_test::wheel(r.slider, 60, 30, 1), 0);
    EXPECT_EQ(r.slider.getValue(), 200.0f);
}

}  // namespace
}  // namespace vl1::gui
