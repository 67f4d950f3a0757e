// What the vault needs of a theme download client (the web client that keeps the app-data
// folder up to date with a theme server). The vault only holds one and forwards to it; the
// client itself, with its transfers and worker thread, lives elsewhere and is handed to the
// vault through hueloom_vault::set_web_client_factory.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace vl1 {

class theme_download_client {
public:
    /// Stops a running download and waits for its worker.
    virtual ~theme_download_client() = default;

    /// Stores server URL, product identifier and the folder that receives theme files.
    virtual void init(const std::string& server_url, const std::string& product_id, const std::string& local_path) = 0;
    virtual void set_manifest_url(const std::string& url) = 0;
    /// The server URL given to init.
    virtual std::string get_server_url() const = 0;

    /// Fetches the manifest and queues each wanted uid (uid -> local version, 0 for a missing
    /// theme) whose server version is higher; with `start`, starts the worker if it is idle.
    /// `on_finished` runs on the worker once a download has run to its end.
    virtual bool schedule_theme_download(const std::map<uint32_t, int>& wanted, bool start,
                                         const std::function<void()>& on_finished) = 0;
    /// True while a worker runs.
    virtual bool is_busy() const = 0;
    /// Asks the worker to stop and returns at once.
    virtual void stop_download() = 0;
    /// Joins the worker, if there is one, and clears the stop request.
    virtual void wait_for_download() = 0;

    /// 0.0..100.0 while busy, else -1.0.
    virtual float get_download_themes_percentage() const = 0;
    /// The manifest's version of `uid`, 0 if unknown or no manifest was read.
    virtual uint32_t get_server_version_of_theme(unsigned int uid) = 0;
};

using theme_download_client_factory = std::function<std::unique_ptr<theme_download_client>()>;

}  // namespace vl1
