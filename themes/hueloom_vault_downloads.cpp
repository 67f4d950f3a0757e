// The vault's side of theme downloads: it holds one download client at a time and forwards
// to it. The client is made by the factory that the plug-in installs.
#include "themes/hueloom_vault.h"

#include <utility>

namespace vl1 {

std::shared_ptr<theme_download_client> hueloom_vault::current_client()
{
    std::lock_guard guard(client_mutex);
    return client;
}

void hueloom_vault::set_web_client_factory(theme_download_client_factory factory)
{
    std::lock_guard guard(client_mutex);
    client_factory = std::move(factory);
}

void hueloom_vault::init_web_client(const std::string& server_url)
{
    theme_download_client_factory factory;
    {
        std::lock_guard guard(client_mutex);
        factory = client_factory;
    }
    std::shared_ptr<theme_download_client> made;
    if (factory) {
        made = factory();
        if (made)
            made->init(server_url, theme_server_product_id, get_hueloom_appdata_folder_path());
    }
    std::shared_ptr<theme_download_client> former;
    {
        std::lock_guard guard(client_mutex);
        former = std::exchange(client, std::move(made));
    }
    // The former client stops and joins its worker as it goes, outside the lock.
    former.reset();
}

bool hueloom_vault::download_themes(const std::string& server_url, const std::set<uint32_t>& uids,
                                    std::function<void()> on_finished)
{
    std::shared_ptr<theme_download_client> downloader = current_client();
    if (!downloader || downloader->get_server_url() != server_url) {
        init_web_client(server_url);
        downloader = current_client();
        if (!downloader)
            return false;
        downloader->set_manifest_url(server_url + "/manifest.json");
    }
    const std::shared_ptr<hueloom_theme_collection_v1> themes = get_theme_collection();
    std::map<uint32_t, int> wanted;
    for (const uint32_t uid : uids) {
        const std::shared_ptr<const hueloom_theme_v1> local = themes->get_theme_by_uid(uid);
        wanted[uid] = local ? static_cast<int>(local->version) : 0;
    }
    downloader->schedule_theme_download(wanted, true, on_finished);
    return downloader->is_busy();
}

void hueloom_vault::stop_download_themes()
{
    if (const std::shared_ptr<theme_download_client> downloader = current_client()) {
        downloader->stop_download();
        downloader->wait_for_download();
    }
}

uint32_t hueloom_vault::get_server_version_of_theme(unsigned int uid)
{
    const std::shared_ptr<theme_download_client> downloader = current_client();
    return downloader ? downloader->get_server_version_of_theme(uid) : 0;
}

float hueloom_vault::get_download_percentage()
{
    const std::shared_ptr<theme_download_client> downloader = current_client();
    return downloader ? downloader->get_download_themes_percentage() : -1.0f;
}

}  // namespace vl1
