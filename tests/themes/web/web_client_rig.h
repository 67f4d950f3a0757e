// A web client pointed at an in-process theme server and a fresh local folder, with short
// time-outs and small size limits so that every failure shows within a second or two.
#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <set>
#include <string>

#include <fmt/format.h>

#include "tests/support/test_files.h"
#include "tests/support/test_paths.h"
#include "tests/themes/web/test_theme_server.h"
#include "themes/web/hueloom_web_client_v1.h"

namespace vl1::webtest {

inline constexpr std::uint64_t test_max_theme_bytes = 1024 * 1024;
inline constexpr std::uint64_t test_max_manifest_bytes = 64 * 1024;

struct client_rig {
    theme_server server;
    std::filesystem::path folder = hueloom_test::make_temp_dir("themes");
    std::unique_ptr<hueloom_web_client_v1> client = std::make_unique<hueloom_web_client_v1>();
    std::atomic<int> finished{0};

    client_rig()
    {
        client->init(server.url(), "Qx7tLm2D", folder.string());
        client->set_manifest_url(server.url() + "/manifest.json");
        client->set_theme_validator(&fake_theme_check);
        client->set_finish_delay(std::chrono::milliseconds(0));
        client->set_transfer_limits({.connect_timeout_ms = 2000,
                                     .low_speed_time_s = 5,
                                     .low_speed_bytes_per_second = 1,
                                     .max_manifest_bytes = test_max_manifest_bytes,
                                     .max_theme_file_bytes = test_max_theme_bytes});
    }

    // The client goes first: its worker may still be talking to the server.
    ~client_rig() { client.reset(); }

    std::function<void()> count_finish() { return [this] { ++finished; }; }

    /// Schedules `wanted` with start and waits for the worker to end.
    bool download(const std::map<uint32_t, int>& wanted)
    {
        const bool result = client->schedule_theme_download(wanted, true, count_finish());
        client->wait_for_download();
        return result;
    }

    std::filesystem::path final_path(uint32_t uid) const { return folder / fmt::format("theme_{:08x}.hlt", uid); }

    void put_local_theme(uint32_t uid, const std::string& bytes) const { hueloom_test::write_file(final_path(uid), bytes); }
    std::string local_theme(uint32_t uid) const { return hueloom_test::read_file(final_path(uid)); }
    std::set<std::string> file_names() const { return hueloom_test::folder_names(folder); }
};

}  // namespace vl1::webtest
