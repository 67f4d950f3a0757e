#include <gtest/gtest.h>

#include <mutex>
#include <tuple>
#include <vector>

#include "tests/themes/web/web_client_rig.h"

namespace vl1 {
namespace {

using webtest::client_rig;
using webtest::fake_theme;
using webtest::theme_server;

TEST(WebClientDownload, FetchesExactlyTheThemesTheServerHasNewer)
{
    client_rig rig;
    EXPECT_EQ(rig.client->get_server_version_of_theme(0xa), 0u);
    rig.server.set_body("/manifest.json", R"({"0000000a": 2, "0000000b": 1, "0000000c": 1, "0000000e": 5})");
    for (uint32_t uid : {0xau, 0xbu, 0xcu, 0xeu})
        rig.server.set_body(theme_server::theme_path(uid), fake_theme(uid, 50 + uid));
    rig.put_local_theme(0xe, fake_theme(0xe, 3, 'o'));

    // a: missing locally; b: same version; c: newer locally; d: not on the server; e: older.
    EXPECT_TRUE(rig.download({{0xa, 0}, {0xb, 1}, {0xc, 3}, {0xd, 0}, {0xe, 4}}));

    EXPECT_EQ(rig.finished, 1);
    EXPECT_EQ(rig.local_theme(0xa), fake_theme(0xa, 60));
    EXPECT_EQ(rig.local_theme(0xe), fake_theme(0xe, 64));
    EXPECT_EQ(rig.server.requests(theme_server::theme_path(0xb)), 0);
    EXPECT_EQ(rig.server.requests(theme_server::theme_path(0xc)), 0);
    EXPECT_EQ(rig.file_names(), (std::set<std::string>{"theme_0000000a.hlt", "theme_0000000e.hlt"}));
    EXPECT_EQ(rig.client->get_server_version_of_theme(0xa), 2u);
    EXPECT_EQ(rig.client->get_server_version_of_theme(0xe), 5u);
    EXPECT_EQ(rig.client->get_server_version_of_theme(0xd), 0u);
    EXPECT_FALSE(rig.client->is_busy());
    EXPECT_FLOAT_EQ(rig.client->get_download_themes_percentage(), -1.0f);
}

TEST(WebClientDownload, PercentageCountsFinishedFiles)
{
    client_rig rig;
    std::mutex seen_mutex;
    std::vector<float> seen;
    // The check runs on the worker after a file arrived and before it is counted.
    rig.client->set_theme_validator([&](std::span<const uint8_t> bytes, uint32_t uid, std::string& problem) {
        std::lock_guard lock(seen_mutex);
        seen.push_back(rig.client->get_download_themes_percentage());
        return webtest::fake_theme_check(bytes, uid, problem);
    });
    rig.server.set_body("/manifest.json", R"({"00000001": 1, "00000002": 1, "00000003": 1, "00000004": 1})");
    for (uint32_t uid = 1; uid <= 4; ++uid)
        rig.server.set_body(theme_server::theme_path(uid), fake_theme(uid));
    float at_finish = 0.0f;
    ASSERT_TRUE(rig.client->schedule_theme_download({{1, 0}, {2, 0}, {3, 0}, {4, 0}}, true, [&] {
        at_finish = rig.client->get_download_themes_percentage();
    }));
    rig.client->wait_for_download();
    EXPECT_EQ(seen, (std::vector<float>{0.0f, 25.0f, 50.0f, 75.0f}));
    EXPECT_FLOAT_EQ(at_finish, 100.0f);
    EXPECT_FLOAT_EQ(rig.client->get_download_themes_percentage(), -1.0f);
}

TEST(WebClientDownload, ReplacesFormerFileAndClearsLeftovers)
{
    client_rig rig;
    rig.put_local_theme(0xa, fake_theme(0xa, 5, 'o'));
    // Remains of an interrupted run: one for this theme, one for another.
    std::ofstream(rig.folder / "0000000a.hlt~") << "stale half of a file";
    std::ofstream(rig.folder / "deadbeef.hlt~") << "stale";
    std::ofstream(rig.folder / "notes.txt") << "kept";
    rig.server.set_body("/manifest.json", R"({"0000000a": 2})");
    rig.server.set_body(theme_server::theme_path(0xa), fake_theme(0xa, 20, 'n'));

    EXPECT_TRUE(rig.download({{0xa, 1}}));
    EXPECT_EQ(rig.local_theme(0xa), fake_theme(0xa, 20, 'n'));
    EXPECT_EQ(rig.file_names(), (std::set<std::string>{"notes.txt", "theme_0000000a.hlt"}));
}

TEST(WebClientDownload, LaterSchedulingWaitsForTheNextStart)
{
    client_rig rig;
    rig.server.set_body("/manifest.json", R"({"0000000a": 1, "0000000b": 1})");
    rig.server.set_body(theme_server::theme_path(0xa), fake_theme(0xa));
    rig.server.set_body(theme_server::theme_path(0xb), fake_theme(0xb));
    int second_finished = 0;
    bool second_result = false;
    // While the worker is busy with a, b is scheduled (from the worker's own check).
    rig.client->set_theme_validator([&](std::span<const uint8_t> bytes, uint32_t uid, std::string& problem) {
        if (uid == 0xa)
            second_result = rig.client->schedule_theme_download({{0xb, 0}}, true, [&] { ++second_finished; });
        return webtest::fake_theme_check(bytes, uid, problem);
    });

    ASSERT_TRUE(rig.download({{0xa, 0}}));
    EXPECT_TRUE(second_result);
    // The running worker took only what was queued when it started.
    EXPECT_EQ(rig.finished, 1);
    EXPECT_EQ(second_finished, 0);
    EXPECT_EQ(rig.server.requests(theme_server::theme_path(0xb)), 0);
    EXPECT_EQ(rig.file_names(), (std::set<std::string>{"theme_0000000a.hlt"}));

    ASSERT_TRUE(rig.client->start_download_themes(rig.count_finish()));
    rig.client->wait_for_download();
    EXPECT_EQ(rig.finished, 2);
    EXPECT_EQ(rig.file_names(), (std::set<std::string>{"theme_0000000a.hlt", "theme_0000000b.hlt"}));
}

TEST(WebClientDownload, UnchangedManifestTimeStampKeepsTheVersions)
{
    client_rig rig;
    const char* monday = "Mon, 02 Jan 2023 10:00:00 GMT";
    // Manifest version and time stamp, and the version the client then knows; without a time
    // stamp every manifest counts as new.
    const std::tuple<int, const char*, uint32_t> steps[] = {
        {2, monday, 2}, {3, monday, 2}, {3, "Tue, 03 Jan 2023 10:00:00 GMT", 3}, {4, "", 4}};
    for (const auto& [version, stamp, known] : steps) {
        SCOPED_TRACE(std::to_string(version) + " " + stamp);
        rig.server.set_body("/manifest.json", fmt::format(R"({{"0000000a": {}}})", version), stamp);
        EXPECT_TRUE(rig.client->download_manifest());
        EXPECT_EQ(rig.client->get_server_version_of_theme(0xa), known);
    }
}

TEST(WebClientDownload, NothingNewerOrNoServerStartsNothing)
{
    client_rig rig;
    rig.server.set_body("/manifest.json", R"({"0000000a": 2})");
    EXPECT_TRUE(rig.download({{0xa, 2}, {0xb, 0}}));
    EXPECT_EQ(rig.finished, 0);
    EXPECT_FALSE(rig.client->is_busy());
    EXPECT_TRUE(rig.file_names().empty());

    // Without a server address nothing goes on the network, not even the manifest.
    const int manifest_requests = rig.server.requests("/manifest.json");
    rig.client->init("", "Qx7tLm2D", rig.folder.string());
    rig.client->set_manifest_url(rig.server.url() + "/manifest.json");
    EXPECT_FALSE(rig.client->download_manifest());
    EXPECT_FALSE(rig.client->schedule_theme_download({{0xa, 0}}, true, rig.count_finish()));
    EXPECT_EQ(rig.server.requests("/manifest.json"), manifest_requests);
    EXPECT_FALSE(rig.client->is_busy());
}

}  // namespace
}  // namespace vl1
