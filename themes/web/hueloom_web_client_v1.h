// Keeps the app-data folder of theme files up to date with a theme server: fetches the
// manifest, queues every wanted theme that the server has in a newer version, and downloads
// the queue one file after the other on a worker thread of its own, over one libcurl handle.
//
// Every failure goes to the standard error stream in plain English; nothing reaches the user
// and nothing escapes the worker thread. A file reaches its final name only after a check
// has accepted it as the theme asked for (downloaded_theme_files.h, theme_file_check.h), so a
// failed download never replaces a theme file.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "themes/theme_download_client.h"
#include "themes/web/downloaded_theme_files.h"
#include "themes/web/theme_manifest.h"
#include "themes/web/web_transfer.h"

namespace vl1 {

class hueloom_web_client_v1 : public theme_download_client {
public:
    hueloom_web_client_v1();
    /// Stops a running download and waits for its worker. Must not run on the worker itself
    /// (that is, not inside on_finished).
    ~hueloom_web_client_v1() override;
    hueloom_web_client_v1(const hueloom_web_client_v1&) = delete;
    hueloom_web_client_v1& operator=(const hueloom_web_client_v1&) = delete;

    /// Stores the server URL (without trailing "/"), the product identifier and the folder
    /// that receives the files; the manifest URL becomes server URL + "/" + product id +
    /// ".json" until set_manifest_url replaces it. An empty server URL means no server: no
    /// transfer is ever attempted.
    void init(const std::string& server_url, const std::string& product_id, const std::string& local_path) override;
    void set_manifest_url(const std::string& url) override;
    std::string get_server_url() const override;

    /// Fetches the manifest into the server versions. False if stopped, without server, if
    /// the transfer fails or the manifest is refused (the former versions then stay). True
    /// also when the server's time stamp shows the manifest unchanged; it is not read then.
    bool download_manifest();

    /// download_manifest, then queues each uid of `wanted` (uid -> local version, 0 for a
    /// missing theme) whose server version is higher. With `start`, starts the worker if it
    /// is idle and the queue isn't empty, and returns what that start returns. False, with
    /// nothing queued, if the manifest could not be had.
    bool schedule_theme_download(const std::map<uint32_t, int>& wanted, bool start,
                                 const std::function<void()>& on_finished) override;

    /// Starts the worker on the queue. False if it runs already, the queue is empty, there is
    /// no local folder or it can't be made, or no thread could be started. `on_finished`
    /// runs on the worker after the last file, unless the download was stopped.
    bool start_download_themes(const std::function<void()>& on_finished);

    bool is_busy() const override;
    /// Asks the worker to stop; a transfer in progress ends within about a second, even if
    /// the server has stalled. Returns at once.
    void stop_download() override;
    /// Joins the worker, if there is one, and clears the stop request.
    void wait_for_download() override;

    /// 0.0..100.0 while the worker runs (files done / files queued at its start), else -1.0.
    float get_download_themes_percentage() const override;
    /// The manifest's version of `uid`; 0 if unknown.
    uint32_t get_server_version_of_theme(unsigned int uid) override;

    /// The check that a downloaded file must pass before it replaces anything. By default a
    /// file must read as a theme file of the uid that was asked for (is_theme_file_of_uid);
    /// an empty check installs nothing at all.
    void set_theme_validator(theme_bytes_validator validator);
    /// Time-outs and size limits of all later transfers.
    void set_transfer_limits(const web_transfer_limits& limits);
    web_transfer_limits get_transfer_limits() const;
    /// The pause between the last file and on_finished; 500 ms unless set.
    void set_finish_delay(std::chrono::milliseconds delay);

private:
    void downloadThemesTask();
    bool download_theme(const std::string& url, const std::string& path, std::string& problem);
    void fetch_and_install(uint32_t uid);
    void finish_worker();

    mutable std::mutex state_mutex;  // everything below up to `transfer_mutex`
    std::string server_url;
    std::string product_id;
    std::string local_path;
    std::string manifest_url;
    float percentage = 0.0f;
    long long manifest_file_time = 0;
    theme_versions server_versions;
    std::deque<uint32_t> queue;
    std::function<void()> on_finished;
    theme_bytes_validator validator;
    std::chrono::milliseconds finish_delay{500};

    mutable std::mutex transfer_mutex;  // the transfer, its handle and its limits
    std::atomic<bool> stop{false};
    std::atomic<bool> busy{false};
    web_transfer transfer{stop};

    std::mutex worker_mutex;  // the thread object only
    std::shared_ptr<std::thread> worker;
};

}  // namespace vl1
