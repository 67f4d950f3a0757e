#include "tools/hueloom_theme/theme_server.h"

#include "framework/io/read_bounded_file.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/web/theme_addresses.h"

#include <fmt/format.h>
#include <httplib.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <iterator>
#include <memory>
#include <thread>

namespace fs = std::filesystem;

namespace vl1::theme_tool {

namespace {

/// An HTTP date ("Mon, 23 Nov 2026 15:11:00 GMT") of a file time.
std::string http_date(fs::file_time_type t)
{
    const auto system = std::chrono::time_point_cast<std::chrono::seconds>(
        t - fs::file_time_type::clock::now() + std::chrono::system_clock::now());
    const std::time_t seconds = std::chrono::system_clock::to_time_t(system);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[64];
    std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S GMT", &utc);
    return text;
}

}  // namespace

theme_catalogue scan_theme_folder(const fs::path& folder)
{
    theme_catalogue catalogue;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        if (entry.path().extension() != ".hlt" || !entry.is_regular_file(ec))
            continue;
        hueloom_theme_v1 theme;
        std::string problem;
        if (!hueloom_theme_file_serializer_v1::read_theme_from_file(theme, entry.path().string(), problem)) {
            catalogue.problems.push_back(fmt::format("{}: not published, {}", entry.path().string(), problem));
            continue;
        }
        if (theme.uid == 0) {
            catalogue.problems.push_back(fmt::format("{}: not published, its uid is 0", entry.path().string()));
            continue;
        }
        auto [it, added] = catalogue.themes.try_emplace(theme.uid);
        if (!added && it->second.version >= theme.version) {
            catalogue.problems.push_back(fmt::format("{}: not published, {} has uid {:08x} in version {} already",
                                                     entry.path().string(), it->second.file.string(), theme.uid,
                                                     it->second.version));
            continue;
        }
        it->second = {entry.path(), theme.version, theme.name, entry.last_write_time(ec)};
    }
    if (ec)
        catalogue.problems.push_back(fmt::format("{}: {}", folder.string(), ec.message()));
    return catalogue;
}

std::string manifest_json(const theme_catalogue& catalogue)
{
    std::string text = "{";
    for (const auto& [uid, theme] : catalogue.themes)
        text += fmt::format("{}\n  \"{}\": {}", text.size() > 1 ? "," : "", theme_uid_hex(uid), theme.version);
    return text + "\n}\n";
}

struct theme_server::impl {
    fs::path folder;
    httplib::Server http;
    std::function<void(const std::string&)> log;
    /// Bytes a second for theme files; 0 is no limit.
    std::size_t rate = 0;
    std::atomic<bool> stopping{false};

    /// Sends `bytes` a tenth of a second's worth of `rate` at a time, one slice a tenth of a
    /// second; a stop ends the transfer at the next slice, so a slow download never keeps
    /// the server from ending.
    void send_slowly(std::string bytes, httplib::Response& res)
    {
        auto shared = std::make_shared<std::string>(std::move(bytes));
        const std::size_t slice = std::max<std::size_t>(1, rate / 10);
        const auto provide = [this, shared, slice](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            if (stopping)
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            return sink.write(shared->data() + offset, std::min(slice, length));
        };
        res.set_content_provider(shared->size(), "application/octet-stream", provide);
    }

    void serve_manifest(httplib::Response& res)
    {
        const theme_catalogue catalogue = scan_theme_folder(folder);
        fs::file_time_type newest{};
        for (const auto& [uid, theme] : catalogue.themes)
            newest = std::max(newest, theme.modified);
        if (!catalogue.themes.empty())
            res.set_header("Last-Modified", http_date(newest));
        res.set_content(manifest_json(catalogue), "application/json");
    }

    void serve_theme(const httplib::Request& req, httplib::Response& res)
    {
        uint32_t uid = 0;
        const std::string hex = req.matches[1].str() + req.matches[2].str() + req.matches[3].str();
        const theme_catalogue catalogue = scan_theme_folder(folder);
        const auto it = parse_theme_uid(hex, uid) ? catalogue.themes.find(uid) : catalogue.themes.end();
        if (it == catalogue.themes.end()) {
            res.status = 404;
            res.set_content("no such theme\n", "text/plain");
            return;
        }
        std::string bytes;
        std::string problem;
        if (!read_bounded_file(it->second.file, largest_theme_file_bytes, bytes, problem)) {
            res.status = 500;
            return;
        }
        std::error_code ec;
        res.set_header("Last-Modified", http_date(fs::last_write_time(it->second.file, ec)));
        if (rate > 0)
            send_slowly(std::move(bytes), res);
        else
            res.set_content(std::move(bytes), "application/octet-stream");
    }
};

theme_server::theme_server(fs::path folder) : self(std::make_unique<impl>())
{
    self->folder = std::move(folder);
    // No SO_REUSEADDR or SO_REUSEPORT: with them a second server binds to a port in use, and
    // the two processes take turns at answering. Without them the second one is refused.
    self->http.set_socket_options([](socket_t) {});
    self->http.Get("/manifest.json", [this](const httplib::Request&, httplib::Response& res) { self->serve_manifest(res); });
    self->http.Get(R"(/([0-9a-f]{2})/([0-9a-f]{2})/([0-9a-f]{4})\.hlt)",
                   [this](const httplib::Request& req, httplib::Response& res) { self->serve_theme(req, res); });
    self->http.set_logger([this](const httplib::Request& req, const httplib::Response& res) {
        if (self->log)
            self->log(fmt::format("{} {} {}", req.method, req.path, res.status));
    });
}

theme_server::~theme_server() { stop(); }

int theme_server::bind(const std::string& address, int port, std::string& problem)
{
    errno = 0;
    const int bound = port == 0 ? self->http.bind_to_any_port(address) : self->http.bind_to_port(address, port) ? port : -1;
    if (bound < 0) {
        const int error = errno;
        problem = error == EADDRINUSE ? "another process listens on that port"
                  : error != 0        ? std::strerror(error)
                                      : "the address can't be bound";
    }
    return bound;
}

bool theme_server::listen() { return self->http.listen_after_bind(); }

void theme_server::stop()
{
    self->stopping = true;
    self->http.stop();
}

void theme_server::on_request(std::function<void(const std::string&)> log) { self->log = std::move(log); }

void theme_server::set_rate(std::size_t bytes_per_second) { self->rate = bytes_per_second; }

}  // namespace vl1::theme_tool
