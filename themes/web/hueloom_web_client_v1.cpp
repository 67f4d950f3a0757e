#include "themes/web/hueloom_web_client_v1.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "framework/cutils_linux.h"
#include "themes/web/theme_addresses.h"
#include "themes/web/theme_file_check.h"

namespace vl1 {

namespace {

// The client's one channel for failures: the standard error stream, one line each.
void report(const std::string& text)
{
    std::fprintf(stderr, "Hueloom theme download: %s\n", text.c_str());
}

struct file_closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

hueloom_web_client_v1::hueloom_web_client_v1() : validator(&is_theme_file_of_uid)
{
    if (!transfer.has_handle())
        report("libcurl could not make a transfer handle; nothing will be downloaded");
}

hueloom_web_client_v1::~hueloom_web_client_v1()
{
    stop = true;
    wait_for_download();
}

void hueloom_web_client_v1::init(const std::string& url, const std::string& product, const std::string& folder)
{
    std::lock_guard lock(state_mutex);
    server_url = url;
    product_id = product;
    local_path = folder;
    manifest_url = url.empty() ? std::string() : url + "/" + product + ".json";
}

void hueloom_web_client_v1::set_manifest_url(const std::string& url)
{
    std::lock_guard lock(state_mutex);
    manifest_url = url;
}

std::string hueloom_web_client_v1::get_server_url() const
{
    std::lock_guard lock(state_mutex);
    return server_url;
}

bool hueloom_web_client_v1::download_manifest()
{
    try {
        if (stop)
            return false;
        std::string url;
        {
            std::lock_guard lock(state_mutex);
            if (server_url.empty() || manifest_url.empty()) {
                report("no theme server is set, so no themes are downloaded");
                return false;
            }
            url = manifest_url;
        }
        std::string body;
        web_transfer_result result;
        {
            std::lock_guard lock(transfer_mutex);
            result = transfer.fetch_to_string(url, body, transfer.get_limits().max_manifest_bytes);
        }
        if (!result.ok) {
            report("manifest " + url + ": " + result.error);
            return false;
        }
        {
            std::lock_guard lock(state_mutex);
            if (result.file_time >= 0 && result.file_time <= manifest_file_time) {
                std::printf("No new manifest to download.\n");
                return true;
            }
        }
        theme_versions versions;
        std::string problem;
        if (!parse_theme_manifest(body, versions, problem)) {
            report("JSON parsing error: " + url + ": " + problem + "; the former server versions stay");
            return false;
        }
        std::lock_guard lock(state_mutex);
        server_versions = std::move(versions);
        manifest_file_time = result.file_time;
        return true;
    } catch (const std::exception& e) {
        report(std::string("manifest: ") + e.what());
    } catch (...) {
        report("manifest: unexpected failure");
    }
    return false;
}

bool hueloom_web_client_v1::schedule_theme_download(const std::map<uint32_t, int>& wanted, bool start,
                                                    const std::function<void()>& callback)
{
    if (!download_manifest())
        return false;
    bool queue_empty = true;
    try {
        std::lock_guard lock(state_mutex);
        for (const auto& [uid, local_version] : wanted) {
            const auto found = server_versions.find(uid);
            if (found != server_versions.end() && local_version < found->second)
                queue.push_back(uid);
        }
        queue_empty = queue.empty();
    } catch (const std::exception& e) {
        report(std::string("cannot queue the downloads: ") + e.what());
        return false;
    }
    if (start && !busy && !stop && !queue_empty)
        return start_download_themes(callback);
    return true;
}

bool hueloom_web_client_v1::start_download_themes(const std::function<void()>& callback)
{
    bool claimed = false;
    try {
        std::string folder;
        {
            std::lock_guard lock(state_mutex);
            if (queue.empty() || local_path.empty())
                return false;
            folder = local_path;
        }
        if (busy)
            return false;
        if (!create_private_folders(folder)) {
            report("cannot create the theme folder " + folder + ": " + std::strerror(errno));
            return false;
        }
        std::lock_guard worker_lock(worker_mutex);
        bool idle = false;
        if (!busy.compare_exchange_strong(idle, true))
            return false;
        claimed = true;
        {
            std::lock_guard lock(state_mutex);
            on_finished = callback;
            percentage = 0.0f;
        }
        stop = false;
        // The former worker has cleared `busy` as its last act, so this join returns at once.
        // A joinable thread object must never be dropped.
        if (worker && worker->joinable()) {
            if (worker->get_id() == std::this_thread::get_id())
                worker->detach();
            else
                worker->join();
        }
        worker = std::make_shared<std::thread>(&hueloom_web_client_v1::downloadThemesTask, this);
        return true;
    } catch (const std::system_error& e) {
        report(std::string("cannot start the download thread: ") + e.what());
    } catch (const std::exception& e) {
        report(std::string("cannot start the download: ") + e.what());
    }
    if (claimed)
        busy = false;
    return false;
}

void hueloom_web_client_v1::downloadThemesTask()
{
    try {
        busy = true;
        std::size_t total = 0;
        std::string folder;
        {
            std::lock_guard lock(state_mutex);
            total = queue.size();
            folder = local_path;
        }
        remove_leftover_theme_downloads(folder);
        for (std::size_t i = 1; i <= total; ++i) {
            if (stop)
                break;
            uint32_t uid = 0;
            {
                std::lock_guard lock(state_mutex);
                if (queue.empty() || queue.front() == 0)
                    break;
                uid = queue.front();
            }
            fetch_and_install(uid);
            std::lock_guard lock(state_mutex);
            percentage = static_cast<float>(static_cast<double>(i) * 100.0 / static_cast<double>(total));
            queue.pop_front();
        }
        finish_worker();
    } catch (const std::exception& e) {
        report(std::string("the download ended early: ") + e.what());
    } catch (...) {
        report("the download ended early");
    }
    busy = false;
}

void hueloom_web_client_v1::fetch_and_install(uint32_t uid)
{
    std::string url, temporary, final_path;
    theme_bytes_validator check;
    {
        std::lock_guard lock(state_mutex);
        url = constructThemeURL(server_url, uid);
        temporary = constructLocalPathTemp(local_path, uid);
        final_path = constructLocalPathFinal(local_path, uid);
        check = validator;
    }
    std::string problem;
    bool downloaded = false;
    std::uint64_t max_bytes = 0;
    {
        std::lock_guard lock(transfer_mutex);
        max_bytes = transfer.get_limits().max_theme_file_bytes;
        downloaded = download_theme(url, temporary, problem);
    }
    if (!downloaded) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        report(url + ": " + problem + "; the theme file stays as it was");
        return;
    }
    if (!install_downloaded_theme(temporary, final_path, uid, check, max_bytes, problem))
        report(url + ": " + problem + "; the theme file stays as it was");
}

bool hueloom_web_client_v1::download_theme(const std::string& url, const std::string& path, std::string& problem)
{
    // "wb": a leftover of an earlier attempt must not end up in front of the new data.
    std::unique_ptr<std::FILE, file_closer> file(std::fopen(path.c_str(), "wb"));
    if (!file) {
        problem = "Failed to open file for writing: " + path;
        return false;
    }
    const web_transfer_result result =
        transfer.fetch_to_file(url, file.get(), transfer.get_limits().max_theme_file_bytes);
    const bool closed = std::fclose(file.release()) == 0;
    if (!result.ok) {
        problem = result.error;
        return false;
    }
    if (!closed) {
        problem = "cannot finish writing " + path;
        return false;
    }
    return true;
}

void hueloom_web_client_v1::finish_worker()
{
    std::function<void()> callback;
    std::chrono::milliseconds delay{0};
    {
        std::lock_guard lock(state_mutex);
        if (stop || !on_finished)
            return;
        callback = std::move(on_finished);
        on_finished = nullptr;
        delay = finish_delay;
    }
    // In slices, so that a stop during the pause is not kept waiting.
    const auto until = std::chrono::steady_clock::now() + delay;
    while (!stop && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (stop)
        return;
    try {
        callback();
    } catch (const std::exception& e) {
        report(std::string("the completion of the download failed: ") + e.what());
    } catch (...) {
        report("the completion of the download failed");
    }
}

bool hueloom_web_client_v1::is_busy() const
{
    return busy;
}

void hueloom_web_client_v1::stop_download()
{
    stop = true;
}

void hueloom_web_client_v1::wait_for_download()
{
    // Held through the join, so that two waiting threads never join one thread object. The
    // worker never takes this lock, and a start from inside on_finished gives up on `busy`
    // before it would.
    std::lock_guard lock(worker_mutex);
    if (worker && worker->joinable() && worker->get_id() != std::this_thread::get_id()) {
        try {
            worker->join();
        } catch (const std::system_error& e) {
            report(std::string("cannot wait for the download: ") + e.what());
        }
    }
    stop = false;
}

float hueloom_web_client_v1::get_download_themes_percentage() const
{
    if (!busy)
        return -1.0f;
    std::lock_guard lock(state_mutex);
    return percentage;
}

uint32_t hueloom_web_client_v1::get_server_version_of_theme(unsigned int uid)
{
    std::lock_guard lock(state_mutex);
    const auto found = server_versions.find(uid);
    return found == server_versions.end() ? 0u : static_cast<uint32_t>(found->second);
}

void hueloom_web_client_v1::set_theme_validator(theme_bytes_validator check)
{
    std::lock_guard lock(state_mutex);
    validator = std::move(check);
}

void hueloom_web_client_v1::set_transfer_limits(const web_transfer_limits& limits)
{
    std::lock_guard lock(transfer_mutex);
    transfer.set_limits(limits);
}

web_transfer_limits hueloom_web_client_v1::get_transfer_limits() const
{
    std::lock_guard lock(transfer_mutex);
    return transfer.get_limits();
}

void hueloom_web_client_v1::set_finish_delay(std::chrono::milliseconds delay)
{
    std::lock_guard lock(state_mutex);
    finish_delay = delay;
}

}  // namespace vl1
