// The editor's controls as a colourist uses them, in a real X server: the wheel, the sliders,
// undo and redo, closing with and without reset, themes, presets and the LUT export.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "tests/gui/editor_test_support.h"
#include "tests/support/test_paths.h"
#include "tests/tools/theme/theme_folder_maker.h"

namespace fs = std::filesystem;

namespace hueloom_test {
namespace {

// The panel's wheel for the built-in picture of 450 points: (16, 108, 467, 559), a 12-point
// marker, reach (451 - 4.75) / 451.
constexpr double wheel_left = 16, wheel_top = 108, wheel_size = 451, marker = 12;
constexpr double max_radius = (451 - 4.75) / 451;
// The hue slider's track (16, 613, 467, 635) and the chroma slider's, 60 points lower.
constexpr double hue_track_y = 599 + 14 + 11;

/// Angle and strength the wheel gives for a click at screen offset (px, py) from its corner.
std::pair<double, double> wheel_reading(int px, int py)
{
    const double x = std::floor((px - marker / 2) / (wheel_size - marker) * 1000 + 0.5) / 1000;
    const double y = std::floor((py - marker / 2) / (wheel_size - marker) * 1000 + 0.5) / 1000;
    const double cx = 2 * (x - 0.5), cy = 2 * (y - 0.5);
    double a = std::atan2(-cx, -cy);
    if (a < 0)
        a += 2 * M_PI;
    return {a * 180 / M_PI, std::min(1.0, std::sqrt(cx * cx + cy * cy) / max_radius) * 100};
}

class editor_panel : public testing::Test {
protected:
    void SetUp() override
    {
        dir = home_dir() / testing::UnitTest::GetInstance()->current_test_info()->name();
        setenv("HUELOOM_LOG", "stderr", 1);
        setenv("HUELOOM_FILE_DIALOG", "builtin", 1);
        ASSERT_TRUE(x.ready()) << "Xvfb did not start";
    }

    x_session x{1600, 900};
    fs::path dir;
};

/// Opens the folder dialog by the button at (x, y), types `name` (a folder in HOME, where the
/// dialog starts) and presses the dialog's OK.
void pick_folder(int x, int y, const std::string& name)
{
    x_session::click(x, y);
    const unsigned long dialog = x_session::wait_for_window("Select Folder with Theme", 10);
    ASSERT_NE(dialog, 0u);
    x_session::type(name);
    const auto [left, top] = x_session::window_origin(dialog);
    const auto [w, h] = x_session::window_size(dialog);
    x_session::click(left + w - 146, top + h - 23);
}

/// Answers the alert that is open (titled "Hueloom") with `key`: Return for its default
/// button, Escape for the other one.
void answer_alert(const std::string& key)
{
    const unsigned long alert = x_session::wait_for_window("Hueloom", 10);
    ASSERT_NE(alert, 0u) << "no alert";
    x_session::shell("xdotool windowactivate --sync " + std::to_string(alert) + " key " + key);
    x_session::settle(0.4);
}

/// Waits up to `seconds` for `done`, since the editor answers in its own time (slower under
/// sanitizers); the last answer.
template <typename Condition>
bool eventually(Condition done, double seconds = 10)
{
    for (double waited = 0; waited < seconds; waited += 0.1) {
        if (done())
            return true;
        x_session::settle(0.1);
    }
    return done();
}

double number(const std::map<std::string, std::string>& settings, const std::string& name)
{
    const auto found = settings.find(name);
    return found == settings.end() ? -1.0 : std::stod(found->second);
}

TEST_F(editor_panel, WheelAndSlidersSetTheParametersAsOneUndoStepEach)
{
    open_editor editor(dir, {"--set", "Angle=90", "--set", "Strength=50", "--set", "Hue=150"});
    ASSERT_TRUE(editor.opened()) << editor.log();
    const int wx = editor.column_x(wheel_left), wy = editor.panel_y(wheel_top);
    // A right click puts the point to the centre, as one step that undo takes back.
    x_session::click(wx + 225, wy + 225, 3);
    x_session::keys("ctrl+z");
    // A click jumps: a quarter in from the top-left gives 45 degrees.
    const int px = static_cast<int>(6 + 0.25 * (wheel_size - marker)), py = px;
    x_session::click(wx + px, wy + py);
    // The corner of the wheel's square isn't part of it.
    x_session::click(wx + 2, wy + 2);
    // The hue slider back to its default by a right click; undo and redo walk that step.
    x_session::click(editor.column_x(100), editor.panel_y(hue_track_y), 3);
    x_session::keys("ctrl+z ctrl+shift+z");
    x_session::screenshot(shots_dir() / "wheel_and_sliders.png");
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();

    const auto settings = editor.settings();
    const auto [angle, strength] = wheel_reading(px, py);
    EXPECT_NEAR(number(settings, "Angle"), angle, 0.01);
    EXPECT_NEAR(number(settings, "Angle"), 45.0, 0.01);
    EXPECT_NEAR(number(settings, "Strength"), strength, 0.01);
    EXPECT_NEAR(number(settings, "Hue"), 100.0, 1e-4);
}

TEST_F(editor_panel, EscapeClosesWithResetAndUndoWalksBack)
{
    open_editor editor(dir, {"--set", "Angle=90", "--set", "Strength=50"});
    ASSERT_TRUE(editor.opened()) << editor.log();
    const int wx = editor.column_x(wheel_left), wy = editor.panel_y(wheel_top);
    x_session::drag(wx + 225, wy + 100, wx + 380, wy + 225);
    x_session::click(editor.column_x(300), editor.panel_y(hue_track_y + 60));
    x_session::keys("Escape");
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();
    const auto settings = editor.settings();
    EXPECT_NEAR(number(settings, "Angle"), 90.0, 1e-4);
    EXPECT_NEAR(number(settings, "Strength"), 50.0, 1e-4);
    EXPECT_NEAR(number(settings, "Chroma"), 100.0, 1e-4);
}

TEST_F(editor_panel, ThemesAreImportedThroughTheDialogAndChosenFromTheMenuInGerman)
{
    setenv("LANG", "de_DE.UTF-8", 1);
    theme_folder_options options;
    options.name = "Abendrot";
    // Folders the dialog lists (it hides dot-folders) right in HOME, where it starts.
    const fs::path good = home_dir() / "Abendrot", bad = home_dir() / "Notizen";
    fs::rename(make_theme_folder(options), good);
    fs::rename(make_temp_dir("no_theme"), bad);
    x_session::shell("convert -size 900x900 radial-gradient:orange-purple '" + (good / "wheel.png").string() + "'");
    open_editor editor(dir, {"--set", "Strength=80", "--set", "Angle=30"});
    unsetenv("LANG");
    ASSERT_TRUE(editor.opened()) << editor.log();
    const int load_x = editor.column_x(0.5 + 451 + 6 + 12), load_y = editor.panel_y(51);

    pick_folder(load_x, load_y, bad.filename().string());
    x_session::screenshot(shots_dir() / "import_failure_de.png");
    answer_alert("Return");
    pick_folder(load_x, load_y, good.filename().string());
    answer_alert("Return");
    x_session::screenshot(shots_dir() / "editor_de.png");
    // The menu opens from its right end; the imported theme stands last and is current, the
    // one above it is the built-in theme. Choosing it is one undo step.
    x_session::click(editor.column_x(0.5 + 451 - 10), load_y);
    x_session::screenshot(shots_dir() / "theme_menu.png");
    x_session::keys("Up Return");
    x_session::keys("ctrl+z");
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();

    const std::string log = editor.log();
    EXPECT_NE(log.find("Fehler beim Öffnen oder beim Lesen der Datei '" + (bad / "theme.json").string()),
              std::string::npos)
        << log;
    EXPECT_NE(log.find("Der Import der Theme \"Abendrot\" war erfolgreich!"), std::string::npos) << log;
    int theme_files = 0;
    for (const auto& entry : fs::directory_iterator(home_dir() / "Varnlight" / "Hueloom"))
        theme_files += entry.path().extension() == ".hlt" ? 1 : 0;
    EXPECT_GE(theme_files, 1) << log;
}

TEST_F(editor_panel, PresetsAreSavedOverwrittenOnlyWhenConfirmedAndDeletedAndTheLutExported)
{
    open_editor editor(dir, {"--set", "Strength=70", "--set", "Angle=120"});
    ASSERT_TRUE(editor.opened()) << editor.log();
    const fs::path preset = home_dir() / "Varnlight" / "Plugin Presets" / "Hueloom" / "Warm.json";
    const int row_y = editor.column_y(48);
    auto save_as = [&](const std::string& name) {
        x_session::click(editor.column_x(60), row_y);
        x_session::keys("End shift+Home BackSpace");
        x_session::type(name);
        x_session::keys("Return");
    };
    save_as("Warm");
    ASSERT_TRUE(eventually([&] { return fs::exists(preset); })) << editor.log();
    const std::string first = read_text(preset);
    // Another look under the same name: Escape keeps the file, Return replaces it.
    x_session::click(editor.column_x(300), editor.panel_y(hue_track_y));
    save_as("Warm");
    answer_alert("Escape");
    EXPECT_EQ(read_text(preset), first);
    save_as("Warm");
    answer_alert("Return");
    EXPECT_TRUE(eventually([&] { return read_text(preset) != first; }));
    // Saving selected the preset, so it may be deleted, after a question.
    x_session::click(editor.column_x(211 + 11), row_y);
    answer_alert("Return");
    EXPECT_TRUE(eventually([&] { return !fs::exists(preset); }));

    x_session::click(editor.column_x(238 + 23), row_y);
    const unsigned long dialog = x_session::wait_for_window("Export LUT", 10);
    ASSERT_NE(dialog, 0u) << editor.log();
    x_session::type("exported.cube");
    const auto [left, top] = x_session::window_origin(dialog);
    const auto [w, h] = x_session::window_size(dialog);
    x_session::click(left + w - 146, top + h - 23);
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();
    // The export button writes a 17-point .cube file into the folder the dialog starts in.
    ASSERT_TRUE(fs::exists(home_dir() / "exported.cube")) << editor.log();
    EXPECT_NE(read_text(home_dir() / "exported.cube").find("LUT_3D_SIZE 17"), std::string::npos);
}

}  // namespace
}  // namespace hueloom_test
