// The theme server of "hueloom-theme serve": publishes the theme files of a folder where the
// plug-in's download client looks for them:
//   <base>/manifest.json        {"<uid as 8 hex digits>": <theme version>, ...}
//   <base>/0a/1b/2c3d.hlt       the theme of uid 0x0a1b2c3d
// The folder is read again for every manifest request, so themes dropped into it (or
// replaced by newer versions) are published without a restart. Only files that read as
// themes are published; the manifest's Last-Modified is the newest of their times.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vl1::theme_tool {

struct published_theme {
    std::filesystem::path file;
    uint32_t version = 0;
    std::string name;
    std::filesystem::file_time_type modified;
};

/// What the folder publishes: each readable theme file by uid (of two files with one uid, the
/// higher version), and a line for each file that can't be published.
struct theme_catalogue {
    std::map<uint32_t, published_theme> themes;
    std::vector<std::string> problems;
};

theme_catalogue scan_theme_folder(const std::filesystem::path& folder);

/// The manifest document of a catalogue.
std::string manifest_json(const theme_catalogue& catalogue);

class theme_server {
public:
    explicit theme_server(std::filesystem::path folder);
    ~theme_server();

    /// Binds to `address`; port 0 picks a free one. The bound port, or -1 with the reason in
    /// `problem` (a port that another process listens on is refused).
    int bind(const std::string& address, int port, std::string& problem);
    /// Serves until stop(); false if it could not listen.
    bool listen();
    /// Ends listen() from any thread.
    void stop();

    /// Called with a line for each request served (method, path, status).
    void on_request(std::function<void(const std::string&)> log);
    /// Sends theme files at no more than `bytes_per_second` (0: as fast as the network goes),
    /// so that a plug-in's download can be watched while it runs.
    void set_rate(std::size_t bytes_per_second);

private:
    struct impl;
    std::unique_ptr<impl> self;
};

}  // namespace vl1::theme_tool
