// The state file: reading what a host's "binaryStateParam" text and our settings look like,
// and refusing what the plug-in couldn't decode. Writing it is shown end to end in
// render_keys (read back) and render_failure (missing folder, full disk).
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
