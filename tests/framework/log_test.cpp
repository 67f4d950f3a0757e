#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/log.h"

namespace vl1 {
namespace {

TEST(Log, FormatsCutsToTheBufferAndNeverThrowsOnRuntimeFormats)
{
    std::vector<std::string> lines;
    set_log_capture([&](std::string_view line) { lines.emplace_back(line); });
    EXPECT_TRUE(log_enabled());
    const std::string long_text(1000, 'x');
    const std::string json = R"({"themes": [{"uid": "00000001"}]})";
    log("Theme {} has {} LUTs", "Warm", 6);
    log_text("plain {text}");
    log("{}", long_text);
    log_dynamic("{}", long_text);
    log_text(long_text);
    log_dynamic(json);
    log_dynamic("{} and {}", 1);  // too few arguments
    log_dynamic("value {:d}", std::string("text"));
    log_dynamic("{0} of {1}", 3, 4);
    set_log_capture(nullptr);
    log("after removal");

    ASSERT_EQ(lines.size(), 9u);
    EXPECT_EQ(lines[0], "Theme Warm has 6 LUTs");
    EXPECT_EQ(lines[1], "plain {text}");
    EXPECT_EQ(lines[2].size(), log_line_capacity - 1);
    EXPECT_EQ(lines[3].size(), log_line_capacity - 1);
    EXPECT_EQ(lines[4].size(), 1000u);
    EXPECT_EQ(lines[5], json);
    EXPECT_EQ(lines[6], "{} and {}");
    EXPECT_EQ(lines[7], "value {:d}");
    EXPECT_EQ(lines[8], "3 of 4");
}

}  // namespace
}  // namespace vl1
