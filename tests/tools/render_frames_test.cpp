// Frame patterns, frame lists and the plan of which file goes where for which frame.
#include "tools/hueloom_render/frame_pattern.h"
#include "tools/hueloom_render/frame_plan.h"
#include "tools/hueloom_render/render_error.h"

#include "tests/support/test_paths.h"

#include <gtest/gtest.h>

#include <fstream>

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

}  // namespace
