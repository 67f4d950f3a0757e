// hueloom-theme pull [--server URL] [UID...]
#include <atomic>
#include <chrono>
#include <set>
#include <thread>

#include <fmt/format.h>

#include "themes/hueloom_vault.h"
#include "themes/web/theme_addresses.h"
#include "themes/web/theme_file_check.h"
#include "themes/web/web_client_settings.h"
#include "themes/web/web_transfer.h"
#include "tools/common/stop_signals.h"
#include "tools/hueloom_theme/theme_command.h"

namespace vl1::theme_tool {

namespace {

struct pull_options {
    std::string server;
    std::set<uint32_t> uids;
};

/// The server and uids from the arguments, falling back on the plug-in's own settings.
std::string parse_pull_options(const std::vector<std::string>& arguments, pull_options& o)
{
    std::string server_text;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& a = arguments[i];
        if (a == "--server") {
            if (i + 1 == arguments.size())
                return "--server needs a URL";
            server_text = arguments[++i];
        } else if (!a.empty() && a[0] == '-') {
            return "unknown option '" + a + "'";
        } else {
            uint32_t uid = 0;
            if (!parse_theme_uid(a, uid))
                return "'" + a + "' is not a theme uid (1 to 8 hexadecimal digits)";
            o.uids.insert(uid);
        }
    }
    const web_client_settings settings = read_web_client_settings();
    if (server_text.empty()) {
        o.server = settings.web_url_base;
    } else {
        std::string problem;
        o.server = theme_server_url_from_text(server_text, problem);
        if (o.server.empty())
            return problem;
    }
    if (o.uids.empty())
        o.uids = settings.wanted_theme_uids;
    if (o.server.empty())
        return "name the theme server with --server URL or HUELOOM_THEME_SERVER";
    if (o.uids.empty())
        return "name the themes to pull (UID...) or list them in HUELOOM_WANTED_THEMES";
    return "";
}

}  // namespace

int run_pull_command(const std::vector<std::string>& arguments, command_io& io)
{
    pull_options o;
    if (const std::string problem = parse_pull_options(arguments, o); !problem.empty())
        return usage_error("pull", io, problem);

    // One look at the manifest first, so that a server that can't be reached is told apart
    // from one that lacks a theme.
    {
        const std::atomic<bool> never{false};
        web_transfer probe(never);
        std::string body;
        const web_transfer_result r =
            probe.fetch_to_string(o.server + "/manifest.json", body, probe.get_limits().max_manifest_bytes);
        if (r.unreachable) {
            io.err << fmt::format("hueloom-theme pull: cannot reach the theme server {}: {}\n", o.server, r.error);
            return exit_unreachable;
        }
    }

    // The same vault and download client as the plug-in's editor uses.
    hueloom_vault vault;
    vault.set_web_client_factory(make_web_client_factory());
    vault.fill_theme_collection_from_appdata({}, true);
    const auto collection = vault.get_theme_collection();
    const auto before = collection->get_theme_versions();

    std::atomic<bool> finished{false};
    if (vault.download_themes(o.server, o.uids, [&finished] { finished = true; })) {
        while (!finished && vault.get_download_percentage() >= 0.0f && !tools::stop_requested())
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        vault.stop_download_themes();  // joins the worker; a transfer still running ends within a second
    }
    if (tools::stop_requested()) {
        io.err << "hueloom-theme pull: interrupted\n";
        return tools::stop_exit_code();
    }
    vault.fill_theme_collection_from_appdata({}, true);

    int code = exit_ok;
    for (uint32_t uid : o.uids) {
        const uint32_t server = vault.get_server_version_of_theme(uid);
        const uint32_t local = collection->get_theme_version(uid);
        const auto was = before.find(uid);
        const uint32_t previous = was == before.end() ? 0 : was->second;
        const auto theme = collection->get_theme_by_uid(uid);
        const std::string name = theme ? fmt::format(" \"{}\"", theme->name) : "";
        if (server == 0) {
            io.err << fmt::format("hueloom-theme pull: {} is not on {}\n", theme_uid_hex(uid), o.server);
            code = exit_failure;
        } else if (local < server) {
            io.err << fmt::format("hueloom-theme pull: {}{}: version {} could not be downloaded\n", theme_uid_hex(uid),
                                  name, server);
            code = exit_failure;
        } else if (previous < server) {
            io.out << fmt::format("{}{}: version {} downloaded{}\n", theme_uid_hex(uid), name, local,
                                  previous == 0 ? "" : fmt::format(" (was {})", previous));
        } else {
            io.out << fmt::format("{}{}: up to date (version {})\n", theme_uid_hex(uid), name, local);
        }
    }
    return code;
}

}  // namespace vl1::theme_tool
