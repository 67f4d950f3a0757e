// The state file: reading what a host's "binaryStateParam" text and our settings look like,
// refusing what the plug-in couldn't decode, and writing it back.
#include "tools/hueloom_render/state_file.h"

#include "tests/support/test_paths.h"
#include "tools/hueloom_render/render_error.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;
using namespace vl1::render_tool;

std::string refusal(const fs::path& path)
{
    try {
        read_state_file(path);
    } catch (const render_error& e) {
        EXPECT_EQ(e.code(), exit_code::input);
        return e.what();
    }
    return {};
}

TEST(state_text, IsPaddedStandardBase64)
{
    for (const char* good : {"QUJD", "QUI=", "QQ==", "AAAAAAAAAAA=", "+/+/"}) EXPECT_TRUE(is_state_text(good)) << good;
    for (const char* bad : {"", "QUJ", "QUJDR", "QQ=", "Q===", "QU-D", "QU_D", "QUJD QUJD", "=QUJ"}) {
        EXPECT_FALSE(is_state_text(bad)) << bad;
    }
}

TEST(state_file, ReadsTheTextAndTheSettingsBehindIt)
{
    const fs::path dir = hueloom_test::make_temp_dir("state");
    std::ofstream(dir / "s.txt") << "  QUJDRA==\r\n\n# a comment\nAngle=60\n  Strength=10@1,90@50  \n";
    const state_file s = read_state_file(dir / "s.txt");
    EXPECT_EQ(s.state_text, "QUJDRA==");
    EXPECT_EQ(s.settings, (std::vector<std::string>{"Angle=60", "Strength=10@1,90@50"}));

    std::ofstream(dir / "empty_state.txt") << "\nAngle=1\n";
    EXPECT_EQ(read_state_file(dir / "empty_state.txt").state_text, "");
}

TEST(state_file, RefusesWhatThePluginCouldNotDecode)
{
    const fs::path dir = hueloom_test::make_temp_dir("state");
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

TEST(state_file, WrittenFilesReadBackTheSame)
{
    const fs::path dir = hueloom_test::make_temp_dir("state");
    const state_file s{"AAAAAAAAAAA=", {"Angle=0@1,360@100", "Hue=120"}};
    write_state_file(dir / "out.txt", s);
    const state_file back = read_state_file(dir / "out.txt");
    EXPECT_EQ(back.state_text, s.state_text);
    EXPECT_EQ(back.settings, s.settings);
    std::vector<std::string> entries;
    for (const auto& e : fs::directory_iterator(dir)) entries.push_back(e.path().filename().string());
    EXPECT_EQ(entries, std::vector<std::string>{"out.txt"}) << "no temporary folder stays";

    try {
        write_state_file(dir / "no" / "out.txt", s);
        ADD_FAILURE() << "a missing folder was written to";
    } catch (const render_error& e) {
        EXPECT_EQ(e.code(), exit_code::output);
    }
}

}  // namespace
