// The editor's controls as a colourist uses them, in a real X server: the wheel, the sliders,
// undo and redo, closing with and without reset, themes from a server and from folders,
// presets and the LUT export.
#include <gtest/gtest.h>

#ifdef HUELOOM_WITH_OCIO
#include <OpenColorIO/OpenColorIO.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/gui/editor_test_support.h"
#include "tests/support/test_paths.h"
#include "tests/tools/theme/theme_folder_maker.h"

namespace fs = std::filesystem;

namespace hueloom_test {
namespace {

// The theme menu (0.5, 40, 451.5, 63), the progress bar and the "updated" label below it at
// 70, and the toolbar's preset menu (20, 37, 180, 59), which opens from its rightmost 17.
constexpr double theme_menu_y = 51, bar_y = 70, preset_handle_x = 172, preset_row_y = 48;

class editor_panel : public testing::Test {
protected:
    void SetUp() override
    {
        dir = home_dir() / testing::UnitTest::GetInstance()->current_test_info()->name();
        setenv("HUELOOM_LOG", "stderr", 1);
        setenv("HUELOOM_FILE_DIALOG", "builtin", 1);
        ASSERT_TRUE(x.ready()) << "Xvfb did not start";
    }

    void TearDown() override
    {
        unsetenv("HUELOOM_THEME_SERVER");
        unsetenv("HUELOOM_WANTED_THEMES");
    }

    x_session x{1600, 900};
    fs::path dir;
};

/// Opens the folder dialog by the button at (x, y) and picks `name`, a folder in HOME, where
/// the dialog starts.
void pick_folder(int x, int y, const std::string& name)
{
    x_session::click(x, y);
    ASSERT_TRUE(answer_file_dialog("Select Folder with Theme", name));
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

/// Answers the alert that is open (titled "Hueloom") with `key`: Return for its default
/// button, Escape for the other one; waits for it to go, since until then it would be found
/// in place of the next alert.
void answer_alert(const std::string& key)
{
    const unsigned long alert = x_session::wait_for_window("Hueloom", 10);
    ASSERT_NE(alert, 0u) << "no alert";
    x_session::shell("xdotool windowactivate --sync " + std::to_string(alert) + " key " + key);
    ASSERT_TRUE(eventually([&] { return x_session::wait_for_window("Hueloom", 0.1) != alert; }, 5))
        << "the alert stays after " << key;
}

/// Points the editor at a theme server that wants the themes of `uids` (hexadecimal, by commas).
void use_theme_server(const std::string& url, const std::string& uids)
{
    setenv("HUELOOM_THEME_SERVER", url.c_str(), 1);
    setenv("HUELOOM_WANTED_THEMES", uids.c_str(), 1);
}

/// A theme file of `name` and `uid` whose wheel picture is all `colour`, packed into `folder`.
void publish_theme(const fs::path& folder, const std::string& name, const std::string& uid, const std::string& colour)
{
    theme_folder_options options;
    options.name = name;
    options.uid = uid;
    const fs::path source = make_theme_folder(options);
    x_session::shell("convert -size 900x900 xc:'" + colour + "' '" + (source / "wheel.png").string() + "'");
    x_session::shell(std::string(HUELOOM_THEME_TOOL) + " pack '" + source.string() + "' '" +
                     (folder / (uid + ".hlt")).string() + "'");
}

/// Saves through the export button's dialog as `name` in HOME, where the dialog starts.
void export_lut(const open_editor& editor, const std::string& name)
{
    x_session::click(editor.column_x(238 + 23), editor.column_y(preset_row_y));
    ASSERT_TRUE(answer_file_dialog("Export LUT", name)) << editor.log();
    EXPECT_TRUE(eventually([&] { return fs::exists(home_dir() / name); })) << editor.log();
}

#ifdef HUELOOM_WITH_OCIO
namespace OCIO = OCIO_NAMESPACE;

/// Largest channel difference between two LUT files as OpenColorIO reads and applies them,
/// at the 17 x 17 x 17 grid points of the exported files.
float largest_difference(const fs::path& a, const fs::path& b)
{
    const auto processor = [](const fs::path& file) {
        OCIO::FileTransformRcPtr transform = OCIO::FileTransform::Create();
        transform->setSrc(file.c_str());
        transform->setInterpolation(OCIO::INTERP_LINEAR);
        return OCIO::Config::CreateRaw()->getProcessor(transform)->getOptimizedCPUProcessor(OCIO::OPTIMIZATION_NONE);
    };
    const auto first = processor(a), second = processor(b);
    float worst = 0.0f;
    for (int r = 0; r <= 16; ++r)
        for (int g = 0; g <= 16; ++g)
            for (int b = 0; b <= 16; ++b) {
                float x[3] = {r / 16.0f, g / 16.0f, b / 16.0f}, y[3] = {x[0], x[1], x[2]};
                first->applyRGB(x);
                second->applyRGB(y);
                worst = std::max({worst, std::abs(x[0] - y[0]), std::abs(x[1] - y[1]), std::abs(x[2] - y[2])});
            }
    return worst;
}
#endif

TEST_F(editor_panel, WheelAndSlidersSetTheParametersAsOneUndoStepEach)
{
    // A theme server that nobody answers at changes nothing for the user.
    const std::string dead_server = "http://127.0.0.1:" + std::to_string(unused_port());
    use_theme_server(dead_server, "5a5a0001");
    open_editor editor(dir, {"--set", "Angle=90", "--set", "Strength=50", "--set", "Hue=150"});
    ASSERT_TRUE(editor.opened()) << editor.log();
    const int wx = editor.column_x(wheel_left), wy = editor.panel_y(wheel_top);
    // A right click puts the point to the centre, as one step that undo takes back.
    x_session::click(wx + 225, wy + 225, 3);
    x_session::keys("ctrl+z");
    // A click jumps: a quarter in from the top-left gives 45 degrees.
    const int px = static_cast<int>(6 + 0.25 * (wheel_size - wheel_marker)), py = px;
    x_session::click(wx + px, wy + py);
    // The corner of the wheel's square isn't part of it.
    x_session::click(wx + 2, wy + 2);
    // The hue slider back to its default by a right click; undo and redo walk that step.
    x_session::click(editor.column_x(100), editor.panel_y(hue_track_y), 3);
    x_session::keys("ctrl+z ctrl+shift+z");
    x_session::screenshot(shots_dir() / "wheel_and_sliders.png");
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();

    EXPECT_NE(editor.log().find("manifest " + dead_server + "/manifest.json: "), std::string::npos) << editor.log();
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

TEST_F(editor_panel, ThemesAreDownloadedImportedAndChosenFromTheMenuInGerman)
{
    // Two themes from a slow server: while the second one arrives the bar stands half way.
    const fs::path served = make_temp_dir("served");
    publish_theme(served, "Morgen", "5a5a0001", "rgb(200,180,40)");
    publish_theme(served, "Zenit", "5a5a0002", "rgb(30,60,200)");
    const theme_server server(served, 128);
    ASSERT_FALSE(server.url.empty()) << read_text(served.string() + ".log");
    use_theme_server(server.url, "5a5a0001,5a5a0002");
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

    const auto bar_green = [&] {
        return near(x_session::screen_pixel(editor.column_x(10), editor.panel_y(bar_y + 3)), {26, 186, 0}, 3);
    };
    ASSERT_TRUE(eventually(bar_green, 40)) << editor.log();
    x_session::screenshot(shots_dir() / "download_de.png");
    // At the end the bar gives way to "Die Theme-Liste wurde aktualisiert."
    EXPECT_TRUE(eventually(
        [&] {
            return !bar_green() &&
                   x_session::light_share(editor.column_x(4), editor.panel_y(bar_y), 200, 14) > 0.05;
        },
        40))
        << editor.log();

    const int load_x = editor.column_x(0.5 + 451 + 6 + 12), load_y = editor.panel_y(theme_menu_y);
    pick_folder(load_x, load_y, bad.filename().string());
    x_session::screenshot(shots_dir() / "import_failure_de.png");
    answer_alert("Return");
    pick_folder(load_x, load_y, good.filename().string());
    answer_alert("Return");
    x_session::screenshot(shots_dir() / "editor_de.png");
    // The menu opens from its right end: the built-in and the downloaded themes by name, then
    // the imported one, current. Above it stands "Zenit"; choosing it shows its picture, and
    // undo brings back the imported theme's.
    const int centre_x = editor.column_x(wheel_left + 225), centre_y = editor.panel_y(wheel_top + 225);
    const rgb imported_look = x_session::screen_pixel(centre_x, centre_y);
    x_session::click(editor.column_x(0.5 + 451 - 10), load_y);
    x_session::screenshot(shots_dir() / "theme_menu.png");
    x_session::keys("Up Return");
    EXPECT_TRUE(eventually([&] { return near(x_session::screen_pixel(centre_x, centre_y), {30, 60, 200}, 3); }))
        << editor.log();
    x_session::keys("ctrl+z");
    EXPECT_TRUE(eventually([&] { return near(x_session::screen_pixel(centre_x, centre_y), imported_look, 3); }));
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();

    const std::string log = editor.log();
    EXPECT_NE(log.find("Fehler beim Öffnen oder beim Lesen der Datei '" + (bad / "theme.json").string()),
              std::string::npos)
        << log;
    EXPECT_NE(log.find("Der Import der Theme \"Abendrot\" war erfolgreich!"), std::string::npos) << log;
    for (const char* file : {"theme_5a5a0001.hlt", "theme_5a5a0002.hlt", "theme_00abcdef.hlt"})
        EXPECT_TRUE(fs::exists(home_dir() / "Varnlight" / "Hueloom" / file)) << file << "\n" << log;
}

TEST_F(editor_panel, PresetsAreSavedOverwrittenOnlyWhenConfirmedDeletedOrRefusedAndTheLutExported)
{
    open_editor editor(dir, {"--set", "Strength=70", "--set", "Angle=120"});
    ASSERT_TRUE(editor.opened()) << editor.log();
    const fs::path presets = home_dir() / "Varnlight" / "Plugin Presets" / "Hueloom", preset = presets / "Warm.json";
    const int row_y = editor.column_y(preset_row_y);
    auto save_as = [&](const std::string& name) {
        x_session::click(editor.column_x(60), row_y);
        x_session::keys("End shift+Home BackSpace");
        x_session::type(name);
        x_session::keys("Return");
    };
    save_as("Warm");
    ASSERT_TRUE(eventually([&] { return fs::exists(preset); })) << editor.log();
    const std::string first = read_text(preset);
    // A copy whose theme record is damaged (behind the flag 1, its mark "1slh" altered): the
    // menu lists it from the next save on.
    std::string broken = first;
    const auto mark = broken.find(",1,49,115,108,104,");
    ASSERT_NE(mark, std::string::npos);
    broken.replace(mark, 6, ",1,48,");
    std::ofstream(presets / "Broken.json") << broken;
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
    // The damaged preset, first below "Preset:", is refused with the reason.
    x_session::click(editor.column_x(preset_handle_x), row_y);
    x_session::screenshot(shots_dir() / "preset_menu.png");
    x_session::keys("Down Return");
    ASSERT_NE(x_session::wait_for_window("Hueloom", 10), 0u) << editor.log();
    x_session::screenshot(shots_dir() / "preset_alert.png");
    answer_alert("Return");

    export_lut(editor, "exported.cube");
    export_lut(editor, "exported.3dl");
    ASSERT_EQ(editor.close_and_wait(), 0) << editor.log();
    const std::string log = editor.log();
    EXPECT_NE(log.find("Alert: Hueloom: Cannot load preset: An error occured when loading a saved theme."),
              std::string::npos)
        << log;
    const auto settings = editor.settings();
    EXPECT_NEAR(number(settings, "Strength"), 70.0, 1e-4);
    EXPECT_GT(number(settings, "Hue"), 101.0) << "the refused preset's hue of 100 was taken";

    // The engine's table for the look left behind: hueloom-render renders a lattice of 65
    // points through the bundle and writes it at full precision; every fourth of its points
    // is one of the 17 of the exported files.
    const fs::path engine = dir / "engine.cube";
    background_process render(HUELOOM_RENDER_TOOL,
                              {"--state-in", editor.state_file.string(), "--export-lut", engine.string(),
                               "--lut-size", "65"},
                              dir / "render.log");
    ASSERT_EQ(render.wait(60), 0) << read_text(dir / "render.log");
#ifdef HUELOOM_WITH_OCIO
    // .cube values have four decimals, each off by half a unit at most; .3dl values are
    // ten-bit codes truncated, up to one code low. Both plus float rounding.
    EXPECT_LT(largest_difference(home_dir() / "exported.cube", engine), 0.5e-4f + 5e-6f);
    EXPECT_LT(largest_difference(home_dir() / "exported.3dl", engine), 1.0f / 1023.0f + 5e-6f);
#endif
}

}  // namespace
}  // namespace hueloom_test
