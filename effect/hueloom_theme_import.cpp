// The effect's part in moving themes: importing a folder the user chose, and the refresh of
// the collection from the app-data folder and the theme server.
#include "effect/hueloom.h"

#include "framework/log.h"
#include "themes/hueloom_vault.h"

namespace vl1 {

bool hueloom::import_theme_and_store_to_appdata(const std::string& folder,
                                                std::pair<std::string, unsigned int>& result, std::string& error)
{
    const auto host_object = get_host();
    if (!host_object)
        return false;
    return get_vault()->import_theme_and_store_to_appdata(folder, host_object->get_language(), result, error);
}

void hueloom::refresh_from_vault()
{
    get_vault()->fill_theme_collection_from_appdata(wanted_theme_uids, true);
    const uint32_t current = get_current_theme_uuid();
    if (current != 0 && is_theme_in_collection(current))
        set_current_theme_by_uuid(current);
    theme_list_changed = true;
    refresh_requested = true;
}

void hueloom::downloadThemesIfNeededThenUpdateVaultThenUpdateGuiThemeList()
{
    refresh_from_vault();
    if (web_url_base.empty())
        return;  // no server configured: the themes on disk are all there is
    const auto vault = get_vault();
    const auto self = std::static_pointer_cast<hueloom>(shared_from_this());
    vault->download_themes(web_url_base, wanted_theme_uids, [vault, self] {
        try {
            self->refresh_from_vault();
        } catch (const std::exception& e) {
            log("Refreshing the themes after a download failed: {0}", e.what());
        }
    });
}

}  // namespace vl1
