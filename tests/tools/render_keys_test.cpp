// hueloom-render with the host's fixture plug-in, whose "Invert" parameter shows in the
// pixels: keys interpolated per frame, settings from a state file and from --set, and the
// state file handed from one run to the next.
#include "tests/tools/render_test_support.h"

#include "tests/support/test_paths.h"
#include "tools/hueloom_render/state_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using namespace render_test;

class render_keys : public ::testing::Test {
protected:
    fs::path dir = hueloom_test::make_temp_dir("keys");
    fs::path still = dir / "still.png";

    void SetUp() override
    {
        if (!fs::exists(fixture_dir())) GTEST_SKIP() << "the host's fixture bundle isn't built";
        write_pattern(still, 10, 6, 3, OIIO::TypeDesc::UINT8);
    }

    run_result render(const std::vector<std::string>& args) { return run_render(joined(fixture_plugin_args(), args)); }
    bool inverted(const fs::path& result)
    {
        return matches_rule(read_pixels(still), read_pixels(result), inverted_look());
    }
    bool unchanged(const fs::path& result)
    {
        return matches_rule(read_pixels(still), read_pixels(result), identity_look());
    }
};

TEST_F(render_keys, KeysChangeTheParameterFromFrameToFrameAndALaterSettingReplacesThem)
{
    const run_result r = render({"-i", still.string(), "-o", (dir / "out.####.png").string(), "--frames", "1-4",
                                 "--set", "Invert=off@1,on@4", "--set", "INVERT=on@1,off@3"});
    ASSERT_EQ(r.exit_code, 0) << r.err;
    // A boolean holds the key at or before the frame; the earlier keys are gone.
    EXPECT_TRUE(inverted(dir / "out.0001.png"));
    EXPECT_TRUE(inverted(dir / "out.0002.png"));
    EXPECT_TRUE(unchanged(dir / "out.0003.png"));
    EXPECT_TRUE(unchanged(dir / "out.0004.png"));
}

TEST_F(render_keys, StateFilesCarryTheStateTextAndTheSettings)
{
    std::ofstream(dir / "in.txt") << "QUJD\n# settings behind the state\nInvert=false\n";
    const run_result first = render({"-i", still.string(), "-o", (dir / "first.png").string(), "--state-in",
                                     (dir / "in.txt").string(), "--set", "Gain=2@1,4@9", "--state-out",
                                     (dir / "out.txt").string()});
    ASSERT_EQ(first.exit_code, 0) << first.err;
    EXPECT_TRUE(unchanged(dir / "first.png"));

    const vl1::render_tool::state_file saved = vl1::render_tool::read_state_file(dir / "out.txt");
    EXPECT_EQ(saved.state_text, "QUJD");
    const auto has = [&](const std::string& s) {
        return std::find(saved.settings.begin(), saved.settings.end(), s) != saved.settings.end();
    };
    EXPECT_TRUE(has("Invert=false"));
    EXPECT_TRUE(has("Gain=2@1,4@9"));
    EXPECT_TRUE(has("Mode=Fancy"));
    EXPECT_TRUE(has("Tint=1:0.5:0.25:1"));

    // --set wins over the file's settings; without it the file's settings hold.
    ASSERT_EQ(render({"-i", still.string(), "-o", (dir / "second.png").string(), "--state-in",
                      (dir / "out.txt").string(), "--set", "invert=1"})
                  .exit_code,
              0);
    EXPECT_TRUE(inverted(dir / "second.png"));
    ASSERT_EQ(
        render({"-i", still.string(), "-o", (dir / "third.png").string(), "--state-in", (dir / "out.txt").string()})
            .exit_code,
        0);
    EXPECT_TRUE(unchanged(dir / "third.png"));
}

TEST_F(render_keys, ListParamsShowsWhatThePluginDescribes)
{
    const run_result r = render({"--list-params"});
    ASSERT_EQ(r.exit_code, 0) << r.err;
    EXPECT_TRUE(contains(r.out, "Plug-in org.hueloom.test.fixture from ")) << r.out;
    EXPECT_TRUE(contains(r.out, "  Gain                 Double   default 1  range 0 .. 4\n")) << r.out;
    EXPECT_TRUE(contains(r.out, "options Plain, Fancy")) << r.out;
    EXPECT_FALSE(contains(r.out, "binaryStateParam")) << "the state isn't set with --set";
    EXPECT_FALSE(contains(r.out, "Write Key")) << "buttons hold no value";
}

}  // namespace
