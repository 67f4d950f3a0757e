#include <gtest/gtest.h>

#include <string>

#include "themes/web/theme_addresses.h"
#include "themes/web/theme_manifest.h"

namespace vl1 {
namespace {

TEST(ThemeUidText, TakesOneToEightHexDigitsAndNothingElse)
{
    const std::pair<const char*, uint32_t> good[] = {
        {"0a1b2c3d", 0x0a1b2c3d}, {"ABCDEF12", 0xabcdef12}, {"1", 1}, {"0x1f", 0x1f}, {"0XFFFFFFFF", 0xffffffff}};
    for (const auto& [text, expected] : good) {
        uint32_t uid = 0;
        EXPECT_TRUE(parse_theme_uid(text, uid)) << text;
        EXPECT_EQ(uid, expected) << text;
    }
    for (const char* text : {"", "00000000", "0x", "123456789", " 12", "12g", "-1", "0x-1"}) {
        uint32_t uid = 77;
        EXPECT_FALSE(parse_theme_uid(text, uid)) << text;
        EXPECT_EQ(uid, 77u) << text;
    }
    EXPECT_EQ(theme_uid_hex(0xab), "000000ab");
}

TEST(ThemeManifest, ReadsVersionsByUid)
{
    theme_versions versions{{5, 5}};
    std::string problem;
    ASSERT_TRUE(parse_theme_manifest("{\"00000001\": 3, \"0a1b2c3d\": 1, \"FF\": 0, \"0x10\": 2147483647}", versions,
                                     problem));
    EXPECT_EQ(problem, "");
    EXPECT_EQ(versions, (theme_versions{{1, 3}, {0x0a1b2c3d, 1}, {0xff, 0}, {0x10, 2147483647}}));
    ASSERT_TRUE(parse_theme_manifest(" {} ", versions, problem));
    EXPECT_TRUE(versions.empty());
}

TEST(ThemeManifest, RefusesEveryOtherShapeAndKeepsTheFormerVersions)
{
    const std::string deep = "{\"00000001\":" + std::string(100000, '[');
    const std::pair<std::string, const char*> broken[] = {
        {"", "not JSON"},
        {deep, "not JSON"},
        {"[1, 2]", "root"},
        {"{\"0a1b2c3d \": 1}", "key"},
        {"{\"00000001\": -1}", "integer"},
        {"{\"00000001\": 2147483648}", "integer"},
        {"{\"00000001\": 1, \"0x1\": 2}", "twice"},
    };
    for (const auto& [body, expected] : broken) {
        theme_versions versions{{7, 9}};
        std::string problem;
        EXPECT_FALSE(parse_theme_manifest(body, versions, problem)) << body.substr(0, 40);
        EXPECT_NE(problem.find(expected), std::string::npos) << body.substr(0, 40) << " gave: " << problem;
        EXPECT_EQ(versions, (theme_versions{{7, 9}})) << body.substr(0, 40);
    }
}

}  // namespace
}  // namespace vl1
