#include <gtest/gtest.h>

#include <cstdlib>

#include "themes/web/web_client_settings.h"

namespace vl1 {
namespace {

TEST(WebClientSettings, ServerAddressIsTrimmedAndMustBeHttp)
{
    std::string problem;
    EXPECT_EQ(theme_server_url_from_text("  https://themes.example/v1//  ", problem), "https://themes.example/v1");
    EXPECT_EQ(problem, "");
    EXPECT_EQ(theme_server_url_from_text("HTTP://127.0.0.1:8080", problem), "HTTP://127.0.0.1:8080");
    EXPECT_EQ(theme_server_url_from_text("", problem), "");
    EXPECT_EQ(problem, "");
    for (const char* bad :
         {"ftp://host/x", "themes.example", "http://", "https:///path", "http://a b/c", "http://host/\x01"}) {
        EXPECT_EQ(theme_server_url_from_text(bad, problem), "") << bad;
        EXPECT_FALSE(problem.empty()) << bad;
    }
}

TEST(WebClientSettings, WantedThemesSkipBadEntriesWithAMessage)
{
    std::vector<std::string> problems;
    EXPECT_EQ(theme_uids_from_text(" 00000001, 0a1b2c3d,,ff ,0x10", problems),
              (std::set<uint32_t>{1, 0x0a1b2c3d, 0xff, 0x10}));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(theme_uids_from_text("1,zz,0,123456789", problems), (std::set<uint32_t>{1}));
    ASSERT_EQ(problems.size(), 3u);
    EXPECT_NE(problems[0].find("\"zz\""), std::string::npos);
    EXPECT_TRUE(theme_uids_from_text("", problems).empty());
}

TEST(WebClientSettings, ComeFromTheEnvironmentAndUnsetMeansNoServer)
{
    unsetenv(theme_server_variable);
    unsetenv(wanted_themes_variable);
    web_client_settings none = read_web_client_settings();
    EXPECT_EQ(none.web_url_base, "");
    EXPECT_TRUE(none.wanted_theme_uids.empty());

    setenv(theme_server_variable, "http://127.0.0.1:9/themes/", 1);
    setenv(wanted_themes_variable, "00000001,0000002a", 1);
    const web_client_settings set = read_web_client_settings();
    EXPECT_EQ(set.web_url_base, "http://127.0.0.1:9/themes");
    EXPECT_EQ(set.wanted_theme_uids, (std::set<uint32_t>{1, 0x2a}));

    setenv(theme_server_variable, "gopher://old", 1);
    EXPECT_EQ(read_web_client_settings().web_url_base, "");
    unsetenv(theme_server_variable);
    unsetenv(wanted_themes_variable);
}

}  // namespace
}  // namespace vl1
