#include <gtest/gtest.h>

#include <chrono>

#include "tests/themes/web/web_client_rig.h"

namespace vl1 {
namespace {

using webtest::canned_reply;
using webtest::client_rig;
using webtest::fake_theme;
using webtest::theme_server;
using clock_type = std::chrono::steady_clock;

constexpr uint32_t theme_a = 0xa;

// A rig whose folder holds version 1 of theme a, and whose server lists version 2 and
// answers its file with `reply`.
void prepare(client_rig& rig, const canned_reply& reply)
{
    rig.put_local_theme(theme_a, fake_theme(theme_a, 10, 'o'));
    rig.server.set_body("/manifest.json", R"({"0000000a": 2})");
    rig.server.set(theme_server::theme_path(theme_a), reply);
}

using kind = canned_reply::kind;

canned_reply reply(std::string body, int status = 200, kind how = kind::body, std::string location = "")
{
    canned_reply r;
    r.how = how;
    r.status = status;
    r.body = std::move(body);
    r.location = std::move(location);
    return r;
}

void expect_former_file_kept(const client_rig& rig)
{
    // No partial file and no leftover beside it.
    EXPECT_EQ(rig.file_names(), (std::set<std::string>{"theme_0000000a.hlt"}));
    EXPECT_EQ(rig.local_theme(theme_a), fake_theme(theme_a, 10, 'o'));
}

TEST(WebClientFailure, BadAnswersNeverReplaceTheThemeFile)
{
    const std::pair<const char*, canned_reply> cases[] = {
        {"404", reply(fake_theme(theme_a), 404)},  // an error page that happens to look right
        {"connection closed mid-body", reply(fake_theme(theme_a, 5000), 200, kind::cut_mid_body)},
        {"file of another theme", reply(fake_theme(0xb))},
        {"empty body", reply("")},
        {"206", reply(fake_theme(theme_a), 206)},
        {"announced size above the limit", reply(fake_theme(theme_a, webtest::test_max_theme_bytes + 1))},
        {"redirect", reply("", 200, kind::redirect, "/elsewhere.hlt")},  // never followed
    };
    for (const auto& [what, reply] : cases) {
        SCOPED_TRACE(what);
        client_rig rig;
        prepare(rig, reply);
        rig.server.set_body("/elsewhere.hlt", fake_theme(theme_a, 30));
        EXPECT_TRUE(rig.download({{theme_a, 1}}));
        EXPECT_EQ(rig.server.requests(theme_server::theme_path(theme_a)), 1);
        EXPECT_EQ(rig.server.requests("/elsewhere.hlt"), 0);
        // The run reached its end, so its completion still comes.
        EXPECT_EQ(rig.finished, 1);
        expect_former_file_kept(rig);
    }
}

TEST(WebClientFailure, EndlessBodyIsCutAtTheLimit)
{
    client_rig rig;
    prepare(rig, reply("", 200, kind::endless));
    const auto start = clock_type::now();
    EXPECT_TRUE(rig.download({{theme_a, 1}}));
    EXPECT_LT(clock_type::now() - start, std::chrono::seconds(10));
    // The server got rid of little more than the limit and socket buffers hold; nowhere
    // near its 100 MB.
    EXPECT_LT(rig.server.endless_bytes_sent(), 32u * 1024 * 1024);
    expect_former_file_kept(rig);
}

TEST(WebClientFailure, StopEndsAStalledTransferPromptly)
{
    client_rig rig;
    prepare(rig, reply("", 200, kind::stall));
    ASSERT_TRUE(rig.client->schedule_theme_download({{theme_a, 1}}, true, rig.count_finish()));
    ASSERT_TRUE(rig.server.wait_for_stall(std::chrono::seconds(5)));
    EXPECT_TRUE(rig.client->is_busy());
    EXPECT_FLOAT_EQ(rig.client->get_download_themes_percentage(), 0.0f);

    const auto start = clock_type::now();
    rig.client->stop_download();
    rig.client->wait_for_download();
    EXPECT_LT(clock_type::now() - start, std::chrono::seconds(3));
    EXPECT_FALSE(rig.client->is_busy());
    EXPECT_EQ(rig.finished, 0);
    expect_former_file_kept(rig);

    // The stop request is over: the next run works.
    rig.server.set_body(theme_server::theme_path(theme_a), fake_theme(theme_a, 40));
    EXPECT_TRUE(rig.download({{theme_a, 1}}));
    EXPECT_EQ(rig.finished, 1);
    EXPECT_EQ(rig.local_theme(theme_a), fake_theme(theme_a, 40));
}

TEST(WebClientFailure, LowSpeedTimeOutEndsAStalledTransferByItself)
{
    client_rig rig;
    web_transfer_limits limits = rig.client->get_transfer_limits();
    // libcurl averages the speed over a few seconds; a limit well above what the stalled
    // server sent at first makes the one second count from the start.
    limits.low_speed_time_s = 1;
    limits.low_speed_bytes_per_second = 1000;
    rig.client->set_transfer_limits(limits);
    prepare(rig, reply("", 200, kind::stall));
    const auto start = clock_type::now();
    EXPECT_TRUE(rig.download({{theme_a, 1}}));
    EXPECT_LT(clock_type::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(rig.finished, 1);
    expect_former_file_kept(rig);
}

TEST(WebClientFailure, DestroyingTheClientStopsItsDownload)
{
    client_rig rig;
    prepare(rig, reply("", 200, kind::stall));
    ASSERT_TRUE(rig.client->schedule_theme_download({{theme_a, 1}}, true, rig.count_finish()));
    ASSERT_TRUE(rig.server.wait_for_stall(std::chrono::seconds(5)));
    const auto start = clock_type::now();
    rig.client.reset();
    EXPECT_LT(clock_type::now() - start, std::chrono::seconds(3));
    EXPECT_EQ(rig.finished, 0);
    expect_former_file_kept(rig);
}

TEST(WebClientManifest, UnusableManifestsKeepTheFormerVersions)
{
    client_rig rig;
    rig.server.set_body("/manifest.json", R"({"0000000a": 2})");
    ASSERT_TRUE(rig.client->download_manifest());

    rig.server.set_body("/other.json", R"({"0000000a": 3})");
    const std::pair<const char*, canned_reply> cases[] = {
        {"not JSON", reply("<html>maintenance</html>")},
        {"404 with a good body", reply(R"({"0000000a": 3})", 404)},
        {"too large", reply("{\"0000000a\": 3" + std::string(webtest::test_max_manifest_bytes, ' ') + "}")},
        {"cut mid-body", reply(R"({"0000000a": 3})", 200, kind::cut_mid_body)},
        {"redirect", reply("", 200, kind::redirect, rig.server.url() + "/other.json")},
    };
    for (const auto& [what, reply] : cases) {
        SCOPED_TRACE(what);
        rig.server.set("/manifest.json", reply);
        EXPECT_FALSE(rig.client->download_manifest());
        EXPECT_FALSE(rig.client->schedule_theme_download({{theme_a, 0}}, true, rig.count_finish()));
        EXPECT_EQ(rig.client->get_server_version_of_theme(theme_a), 2u);
    }
    EXPECT_EQ(rig.server.requests("/other.json"), 0);
    EXPECT_EQ(rig.finished, 0);
    EXPECT_TRUE(rig.file_names().empty());
}

TEST(WebClientManifest, OnlyHttpAndHttpsAreSpoken)
{
    client_rig rig;
    const auto local_file = rig.folder / "manifest.json";
    std::ofstream(local_file) << R"({"0000000a": 2})";
    rig.client->set_manifest_url("file://" + local_file.string());
    EXPECT_FALSE(rig.client->download_manifest());
    EXPECT_EQ(rig.client->get_server_version_of_theme(theme_a), 0u);
}

}  // namespace
}  // namespace vl1
