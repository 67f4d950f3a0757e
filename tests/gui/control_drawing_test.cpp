// The wheel's ring and the slider's track as they reach a real X server's screen.
#include <gtest/gtest.h>

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/x.H>

#include <cmath>
#include <cstdlib>

#include "gui/cvl_color_wheel_xy_pad.h"
#include "gui/cvl_rounded_grey_slider.h"
#include "tests/gui/x_session.h"

namespace vl1::gui {
namespace {

void expect_colour(int x, int y, std::array<int, 3> expected, int tolerance)
{
    const auto seen = hueloom_test::x_session::screen_pixel(x, y);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(seen[c], expected[c], tolerance) << "at " << x << ", " << y << ", channel " << c;
}

TEST(ControlDrawing, TheRingSitsOnTheCircleAndTheTrackIsDark)
{
    hueloom_test::x_session x(640, 480);
    ASSERT_TRUE(x.ready()) << "Xvfb did not start";

    Fl_Double_Window window(300, 260, "controls");
    window.color(FL_BLACK);
    CVLColorWheelXYPad pad(10, 10, 180, 180, nullptr, CVLControl::no_tag);
    CVLRoundedGreySlider slider(10, 200, 280, 40, nullptr, CVLControl::no_tag, 0, 280, nullptr, "Hue");
    window.end();
    pad.set_strength(100.0f);  // angle 0: the top of the circle
    window.show();
    for (int i = 0; i < 20; ++i)
        Fl::wait(0.05);
    XSync(fl_display, False);

    const int left = window.x(), top = window.y();
    // The marker's centre: 12 points wide, its top where max_radius reaches.
    const double ring_x = left + 10 + (180 - 12) * 0.5 + 6;
    const double ring_y = top + 10 + (180 - 12) * ((1.0 - pad.get_max_radius()) / 2) + 6;
    const int ring_left = static_cast<int>(std::floor(ring_x - 6)), ring_row = static_cast<int>(std::floor(ring_y));
    expect_colour(ring_left, ring_row, {87, 87, 87}, 24);
    expect_colour(static_cast<int>(ring_x), ring_row, {0, 0, 0}, 8);  // no fill

    expect_colour(left + 60, top + 200 + 25, {35, 35, 35}, 2);  // the track
    // Moved, the ring leaves nothing behind: the control has no background of its own.
    pad.set_strength(0.0f);
    for (int i = 0; i < 10; ++i)
        Fl::wait(0.05);
    XSync(fl_display, False);
    expect_colour(ring_left, ring_row, {0, 0, 0}, 8);
    expect_colour(left + 10 + 84, top + 10 + 84 + 6, {87, 87, 87}, 24);

    // The default's mark shows above and below the track, beside nothing else.
    expect_colour(left + 10 + 140, top + 200 + 38, {100, 100, 100}, 2);
    expect_colour(left + 60, top + 200 + 38, {0, 0, 0}, 2);
    window.hide();
    Fl::wait(0.05);
}

}  // namespace
}  // namespace vl1::gui
