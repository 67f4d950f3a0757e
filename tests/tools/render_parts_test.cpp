// Smaller parts of the renderer: the command line, the LUT lattice's layout, and the
// progress texts. Which files count as LUTs is shown by the exports in render_tool.
#include "tools/hueloom_render/command_line.h"
#include "tools/hueloom_render/lut_export.h"
#include "tools/hueloom_render/progress_report.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace vl1::render_tool;

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

}  // namespace
