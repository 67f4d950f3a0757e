#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/log.h"

namespace vl1 {
namespace {

class LogTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        set_log_capture([this](std::string_view line) { lines.emplace_back(line); });
    }
    void TearDown() override { set_log_capture(nullptr); }

    std::vector<std::string> lines;
};

TEST_F(LogTest, FormatsWithFmtCutToTheBufferAndPlainTextAsItStands)
{
    EXPECT_TRUE(log_enabled());
    const std::string long_text(1000, 'x');
    log("Theme {} has {} LUTs", "Warm", 6);
    log_text("plain {text}");
    log("{}", long_text);
    log_dynamic("{}", long_text);
    log_text(long_text);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "Theme Warm has 6 LUTs");
    EXPECT_EQ(lines[1], "plain {text}");
    EXPECT_EQ(lines[2].size(), log_line_capacity - 1);
    EXPECT_EQ(lines[3].size(), log_line_capacity - 1);
    EXPECT_EQ(lines[4].size(), 1000u);
    set_log_capture(nullptr);
    log("after removal");
    EXPECT_EQ(lines.size(), 5u);
}

TEST_F(LogTest, RuntimeFormatsNeverThrow)
{
    const std::string json = R"({"themes": [{"uid": "00000001"}]})";
    log_dynamic(json);
    log_dynamic("{} and {}", 1);  // too few arguments
    log_dynamic("value {:d}", std::string("text"));
    log_dynamic("{0} of {1}", 3, 4);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], json);
    EXPECT_EQ(lines[1], "{} and {}");
    EXPECT_EQ(lines[2], "value {:d}");
    EXPECT_EQ(lines[3], "3 of 4");
}

}  // namespace
}  // namespace vl1
