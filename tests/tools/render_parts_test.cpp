// Smaller parts of the renderer: the command line, frame patterns and lists and the plan of
// which file goes where for which frame, the LUT lattice's layout, the progress texts, and
// reading the state file (a host's "binaryStateParam" text and our settings). Which files
// count as LUTs is shown by the exports in render_tool; writing the state file end to end in
// render_keys (read back) and render_failure (missing folder, full disk).
#include "tools/hueloom_render/command_line.h"
#include "tools/hueloom_render/frame_pattern.h"
#include "tools/hueloom_render/frame_plan.h"
#include "tools/hueloom_render/lut_export.h"
#include "tools/hueloom_render/progress_report.h"
#include "tools/hueloom_render/render_error.h"
#include "tools/hueloom_render/state_file.h"

#include "tests/support/test_paths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using namespace vl1::render_tool;

// The exit code and message of the render_error `f` raises.
template <class F>
std::pair<exit_code, std::string> error_of(F&& f)
{
    try {
        f();
    } catch (const render_error& e) {
        return {e.code(), e.what()};
    }
    return {exit_code::ok, ""};
}

TEST(frame_pattern, HashesAndPrintfTokensGiveZeroPaddedNamesAndNothingElse)
{
    EXPECT_EQ(frame_pattern("shot.####.exr").path_for(7), "shot.0007.exr");
    EXPECT_EQ(frame_pattern("shot.####.exr").path_for(123456), "shot.123456.exr");
    EXPECT_EQ(frame_pattern("a/b_#.png").path_for(42), "a/b_42.png");
    EXPECT_EQ(frame_pattern("shot.%04d.exr").path_for(12), "shot.0012.exr");
    EXPECT_EQ(frame_pattern("shot.%d.exr").path_for(12), "shot.12.exr");
    EXPECT_EQ(frame_pattern("100%%_%03d.tif").path_for(5), "100%_005.tif");
    EXPECT_FALSE(frame_pattern("still.exr").has_frame());
    EXPECT_EQ(frame_pattern("100%%.png").path_for(3), "100%.png");
    // More than one token or a stray percent is refused.
    EXPECT_EQ(error_of([] { frame_pattern("s.##.#.exr"); }).first, exit_code::usage);
    EXPECT_EQ(error_of([] { frame_pattern("s.%04d.%d.exr"); }).first, exit_code::usage);
    EXPECT_NE(error_of([] { frame_pattern("s.%s.exr"); }).second.find("%0Nd"), std::string::npos);
    EXPECT_EQ(error_of([] { frame_pattern("s.##########.exr"); }).first, exit_code::usage);
}

TEST(frame_pattern, ExistingFramesAreThoseThePatternWouldName)
{
    const fs::path dir = hueloom_test::make_temp_dir("frames");
    for (const char* name : {"shot.0003.exr", "shot.0010.exr", "shot.0002.exr", "shot.7.exr", "shot.0004.tif",
                             "other.0005.exr", "shot.00x1.exr"}) {
        std::ofstream(dir / name) << "x";
    }
    EXPECT_EQ(frame_pattern((dir / "shot.####.exr").string()).existing_frames(), (std::vector<int>{2, 3, 10}));
    EXPECT_EQ(frame_pattern((dir / "shot.%d.exr").string()).existing_frames(), (std::vector<int>{7}));
    EXPECT_TRUE(frame_pattern((dir / "missing/shot.####.exr").string()).existing_frames().empty());
    EXPECT_TRUE(frame_pattern((dir / "shot.exr").string()).existing_frames().empty());
}

TEST(frame_list, RangesStepsAndListsInTheOrderGiven)
{
    EXPECT_EQ(parse_frame_list("5"), (std::vector<int>{5}));
    EXPECT_EQ(parse_frame_list("1-4"), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(parse_frame_list("1-10x3"), (std::vector<int>{1, 4, 7, 10}));
    EXPECT_EQ(parse_frame_list("9, 2-3,3,0"), (std::vector<int>{9, 2, 3, 0}));
    for (const char* bad : {"", "x", "-3", "5-2", "1-", "1-5x0", "1-5x", "1.5", "1--3", "2,,3", "0-99999999"}) {
        SCOPED_TRACE(bad);
        const auto [code, message] = error_of([&] { parse_frame_list(bad); });
        EXPECT_EQ(code, exit_code::usage);
        EXPECT_NE(message.find("--frames"), std::string::npos) << message;
    }
}

TEST(frame_plan, PatternsStillsAndFrameListsFitTogether)
{
    const auto jobs = plan_frames("in.####.exr", "out.%03d.png", "4-5");
    ASSERT_EQ(jobs.size(), 2u);
    EXPECT_EQ(jobs[1].frame, 5);
    EXPECT_EQ(jobs[1].input, "in.0005.exr");
    EXPECT_EQ(jobs[1].output, "out.005.png");

    const auto still = plan_frames("still.exr", "out.####.exr", "1-3");
    ASSERT_EQ(still.size(), 3u);
    EXPECT_EQ(still[2].input, "still.exr");
    EXPECT_EQ(still[2].output, "out.0003.exr");

    const auto single = plan_frames("a.png", "b.png", "");
    ASSERT_EQ(single.size(), 1u);
    EXPECT_EQ(single[0].frame, 1);
    EXPECT_EQ(plan_frames("a.png", "b.png", "12")[0].frame, 12);

    EXPECT_EQ(error_of([] { plan_frames("in.####.exr", "out.exr", "1-3"); }).first, exit_code::usage);
    EXPECT_EQ(error_of([] { plan_frames("a.png", "b.png", "1-3"); }).first, exit_code::usage);
    EXPECT_EQ(error_of([] { plan_frames("a.png", "b.####.png", ""); }).first, exit_code::usage);
    const fs::path empty = hueloom_test::make_temp_dir("noframes");
    EXPECT_EQ(error_of([&] { plan_frames((empty / "s.####.exr").string(), "o.####.exr", ""); }).first,
              exit_code::input);
    EXPECT_EQ(first_frame(""), 1);
    EXPECT_EQ(first_frame("20-30"), 20);
}

TEST(command_line, OptionsTakeSeparateOrInlineValues)
{
    const parsed_command p = parse_command_line({"-i", "a.exr", "--output=b.exr", "--set", "Angle=1", "--set=Hue=2",
                                                 "--threads", "3", "-q", "--frames=1-9"});
    ASSERT_EQ(p.error, "");
    EXPECT_EQ(p.options.input, "a.exr");
    EXPECT_EQ(p.options.output, "b.exr");
    EXPECT_EQ(p.options.settings, (std::vector<std::string>{"Angle=1", "Hue=2"}));
    EXPECT_EQ(p.options.threads, 3);
    EXPECT_TRUE(p.options.quiet);
    EXPECT_EQ(p.options.frames, "1-9");
    EXPECT_EQ(p.options.plugin_id, default_plugin_id);
}

TEST(command_line, MistakesAreNamed)
{
    EXPECT_NE(parse_command_line({"-i", "a", "-o", "b", "--threads", "two"}).error.find("--threads"),
              std::string::npos);
    EXPECT_NE(parse_command_line({"-i", "a", "-o"}).error.find("-o needs a value"), std::string::npos);
    EXPECT_NE(parse_command_line({"-i", "a", "-o", "b", "--quiet=1"}).error.find("takes no value"), std::string::npos);
    EXPECT_NE(parse_command_line({"-o", "b"}).error.find("-o needs an input"), std::string::npos);
    EXPECT_NE(parse_command_line({}).error.find("nothing to do"), std::string::npos);
    EXPECT_NE(parse_command_line({"--export-lut", ""}).error.find("non-empty"), std::string::npos);
    EXPECT_EQ(parse_command_line({"--export-lut", "a.cube"}).error, "");
    EXPECT_EQ(parse_command_line({"--list-params"}).error, "");
    EXPECT_EQ(parse_command_line({"--help", "--bogus-after"}).error, "unknown option \"--bogus-after\"");
}

TEST(lut_lattice, GridPointsSitWhereTheTableExpectsThem)
{
    rgba_image lattice = make_identity_lattice();
    ASSERT_EQ(lattice.width, 1024);
    ASSERT_EQ(lattice.height, 32);
    // Column b * 32 + r, row g. A graded lattice in which each pixel is marked lands on the
    // same grid point of the table.
    for (int y = 0; y < lattice.height; ++y) {
        for (int x = 0; x < lattice.width; ++x) lattice.pixel(x, y)[3] = static_cast<float>(y * 1024 + x);
    }
    const vl1::lut_argb_variable lut = lattice_to_lut(lattice);
    ASSERT_EQ(lut.edge, 32u);
    ASSERT_EQ(lut.data.size(), 32768u);
    const vl1::argb_float& e = lut.data[vl1::lut_index(32, 2, 9, 5)];
    EXPECT_FLOAT_EQ(e.r, 2.0f / 31.0f);
    EXPECT_FLOAT_EQ(e.g, 9.0f / 31.0f);
    EXPECT_FLOAT_EQ(e.b, 5.0f / 31.0f);
    EXPECT_EQ(e.a, static_cast<float>(9 * 1024 + 5 * 32 + 2));
}

TEST(progress, TextsForTheBarAndTheTimes)
{
    EXPECT_EQ(duration_text(7.4), "0:07");
    EXPECT_EQ(duration_text(754), "12:34");
    EXPECT_EQ(duration_text(3723), "1:02:03");
    EXPECT_EQ(progress_bar_text(0, 10, 0.0, 10), "[----------]  0/10");
    EXPECT_EQ(progress_bar_text(5, 10, 2.0, 10), "[#####-----]  5/10  2.5 fps  0:02 left");
    EXPECT_EQ(progress_bar_text(10, 10, 4.0, 10), "[##########] 10/10  2.5 fps  0:00 left");
}

TEST(progress, EachStyleWritesWhatItPromises)
{
    std::ostringstream lines, bar, quiet;
    progress_report l(lines, progress_style::lines, 2), b(bar, progress_style::bar, 2),
        q(quiet, progress_style::quiet, 2);
    for (progress_report* r : {&l, &b, &q}) {
        r->frame_done("a -> b");
        r->frame_done("c -> d");
        r->finish();
    }
    EXPECT_EQ(lines.str().rfind("hueloom-render: 1/2 a -> b  ", 0), 0u) << lines.str();
    EXPECT_NE(lines.str().find("\nhueloom-render: 2/2 c -> d  "), std::string::npos) << lines.str();
    EXPECT_EQ(bar.str().rfind("\r[", 0), 0u) << bar.str();
    EXPECT_NE(bar.str().find("\r["), bar.str().rfind("\r[")) << "the bar redraws in place";
    EXPECT_EQ(quiet.str(), "");
}

// The message of the render_error that reading `path` raises, which must be an input error.
std::string refusal(const fs::path& path)
{
    const auto [code, message] = error_of([&] { read_state_file(path); });
    EXPECT_EQ(code, exit_code::input);
    return message;
}

TEST(state_text, IsPaddedStandardBase64)
{
    for (const char* good : {"QUJD", "QUI=", "QQ==", "AAAAAAAAAAA=", "+/+/"}) EXPECT_TRUE(is_state_text(good)) << good;
    for (const char* bad : {"", "QUJ", "QUJDR", "QQ=", "Q===", "QU-D", "QU_D", "QUJD QUJD", "=QUJ"}) {
        EXPECT_FALSE(is_state_text(bad)) << bad;
    }
}

TEST(state_file, ReadsTheTextAndTheSettingsBehindItAndRefusesWhatThePluginCouldNotDecode)
{
    const fs::path dir = hueloom_test::make_temp_dir("state");
    std::ofstream(dir / "s.txt") << "  QUJDRA==\r\n\n# a comment\nAngle=60\n  Strength=10@1,90@50  \n";
    const state_file s = read_state_file(dir / "s.txt");
    EXPECT_EQ(s.state_text, "QUJDRA==");
    EXPECT_EQ(s.settings, (std::vector<std::string>{"Angle=60", "Strength=10@1,90@50"}));

    std::ofstream(dir / "empty_state.txt") << "\nAngle=1\n";
    EXPECT_EQ(read_state_file(dir / "empty_state.txt").state_text, "");

    // What the plug-in could not decode is refused.
    std::ofstream(dir / "chars.txt") << "QU*D\n";
    EXPECT_NE(refusal(dir / "chars.txt").find("has '*' at column 3"), std::string::npos) << refusal(dir / "chars.txt");
    std::ofstream(dir / "short.txt") << "QUJDR\n";
    EXPECT_NE(refusal(dir / "short.txt").find("5 characters is no complete base64"), std::string::npos);
    std::ofstream(dir / "blank.txt") << "  \n\n";
    EXPECT_NE(refusal(dir / "blank.txt").find("empty"), std::string::npos);
    std::ofstream(dir / "setting.txt") << "QUJD\nAngle 60\n";
    EXPECT_NE(refusal(dir / "setting.txt").find("line 2"), std::string::npos);
    EXPECT_NE(refusal(dir / "missing.txt").find("does not exist"), std::string::npos);
    EXPECT_NE(refusal(dir).find("not a regular file"), std::string::npos);
}

}  // namespace
