// The editor as a person meets it: hueloom-look opens it on a picture in a real X server
// with a window manager; the person looks at it and closes it by the title bar.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/gui/editor_test_support.h"
#include "tests/gui/x_session.h"
#include "tests/support/test_paths.h"

namespace fs = std::filesystem;

namespace hueloom_test {
namespace {

constexpr int source_rgb[3] = {153, 77, 51};

/// The 8-bit colour of pixel (0, 0) of an image file.
std::array<int, 3> file_pixel(const fs::path& p)
{
    const std::string text = x_session::shell("convert '" + p.string() + "[1x1+0+0]' -depth 8 txt:-");
    const auto open = text.find('(', text.find('\n'));
    std::array<int, 3> rgb{-1, -1, -1};
    if (open != std::string::npos)
        std::sscanf(text.c_str() + open, "(%d,%d,%d", &rgb[0], &rgb[1], &rgb[2]);
    return rgb;
}

class editor_window : public testing::Test {
protected:
    void SetUp() override
    {
        dir = home_dir() / ::testing::UnitTest::GetInstance()->current_test_info()->name();
        fs::create_directories(dir);
        setenv("HUELOOM_LOG", "stderr", 1);
    }

    fs::path dir;
};

TEST_F(editor_window, OpensSizedForTheScreenShowsTheGradedFrameAndClosesByTheWindowManager)
{
    x_session x(1600, 900);
    ASSERT_TRUE(x.ready()) << "Xvfb did not start";
    open_editor editor(dir, {"--set", "Strength=80", "--set", "Angle=60"});
    ASSERT_TRUE(editor.opened()) << editor.log();
    // 90 % of 1600 wide, 528:988 high; the window is one point smaller than asked.
    EXPECT_EQ(x_session::window_size(editor.window), std::make_pair(1439, 768));
    EXPECT_NE(editor.log().find("Obtained size: 1440, 769"), std::string::npos);

    // The middle of the preview (left of the 494-point column) where a window centred on the
    // screen has it.
    const int left = (1600 - 1440) / 2, top = (900 - 769) / 2;
    const std::array<int, 3> shown = x_session::screen_pixel(left + (1439 - 494) / 2, top + 768 / 2);
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();
    const std::array<int, 3> graded = file_pixel(editor.graded_file);
    for (int c = 0; c < 3; ++c) {
        EXPECT_NEAR(shown[c], graded[c], 1) << "channel " << c;
    }
    EXPECT_NE(graded, (std::array<int, 3>{source_rgb[0], source_rgb[1], source_rgb[2]})) << "the look shows";
}

TEST_F(editor_window, AtDoubleDensityLaysOutInPointsAndReadsTheMouseInPoints)
{
    // A desktop scaled for a double-density screen, as desktops announce it to X programs.
    x_session x(3200, 1800);
    ASSERT_TRUE(x.ready()) << "Xvfb did not start";
    x_session::shell("xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER 'Xft.dpi: 192'");
    open_editor editor(dir, {"--set", "Angle=90", "--set", "Strength=50"});
    ASSERT_TRUE(editor.opened()) << editor.log();
    editor.zoom = 2;
    // Sized in pixels like any window for this screen: 1440 x 769 points at two pixels each.
    EXPECT_EQ(x_session::window_size(editor.window), std::make_pair(2879, 1538));

    // A click on the wheel and one on the hue slider's track, both in points.
    const double px = 6 + 0.3 * (wheel_size - wheel_marker), py = 6 + 0.7 * (wheel_size - wheel_marker);
    x_session::click(editor.column_x(wheel_left + px), editor.panel_y(wheel_top + py));
    x_session::click(editor.column_x(100), editor.panel_y(hue_track_y));
    x_session::settle(1.5);
    const std::array<int, 3> shown = x_session::screen_pixel(editor.column_x(-400), editor.column_y(384));
    x_session::screenshot(shots_dir() / "double_density.png");
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();

    const auto settings = editor.settings();
    const auto [angle, strength] = wheel_reading(px, py);
    EXPECT_NEAR(number(settings, "Angle"), angle, 0.01);
    EXPECT_NEAR(number(settings, "Strength"), strength, 0.01);
    // The handle jumps centred under the mouse, 84 points into the 451-point track.
    const fs::path handle_file = fs::path(HUELOOM_BUILD_DIR) / "OFX/Plugins/Hueloom.ofx.bundle/Contents/Resources" /
                                 "slider_handle.png";
    const double handle = std::stoi(x_session::shell("identify -format %w '" + handle_file.string() + "'")) / 2.0;
    EXPECT_NEAR(number(settings, "Hue"), (84 - handle / 2) / (451 - std::floor(handle)) * 200, 0.01);
    // The preview, drawn over the frame's pixels, shows the look the editor left.
    const std::array<int, 3> graded = file_pixel(editor.graded_file);
    for (int c = 0; c < 3; ++c) {
        EXPECT_NEAR(shown[c], graded[c], 1) << "channel " << c;
    }
}

TEST_F(editor_window, WithoutDisplayTheFrameRendersAndNoWindowOpens)
{
    unsetenv("DISPLAY");
    const fs::path out = dir / "graded.png", log = dir / "look.log";
    background_process look(HUELOOM_LOOK_TOOL,
                            {"-i", write_flat_picture(dir).string(), "-o", out.string(), "--set", "Strength=80",
                             "--set", "Angle=60"},
                            log);
    ASSERT_EQ(look.wait(60), 0) << read_text(log);
    EXPECT_NE(read_text(log).find("No parent window handle."), std::string::npos);
    EXPECT_NE(file_pixel(out), (std::array<int, 3>{source_rgb[0], source_rgb[1], source_rgb[2]}));
}

}  // namespace
}  // namespace hueloom_test
