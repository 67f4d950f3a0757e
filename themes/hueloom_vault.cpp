#include "themes/hueloom_vault.h"

#include <filesystem>

#include <fmt/format.h>

#include "framework/cutils_linux.h"
#include "framework/iutils.h"
#include "framework/localize.h"
#include "framework/log.h"
#include "themes/ctime_text.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/theme_folder_import.h"
#include "themes/theme_import_failure.h"

namespace vl1 {

namespace {

namespace fs = std::filesystem;

std::string localized_pair(language_id language, const std::string& english, const std::string& german)
{
    return localize_text(language, "{en:" + english + "}{de:" + german + "}");
}

// The two texts number their placeholders from 1: {1} is the server's version and {2} the
// imported one, so the arguments start with one that neither text uses.
std::pair<std::string, std::string> server_version_conflict(uint32_t server_version, uint32_t imported_version)
{
    return {fmt::format("Version of theme on server ({1}) is greater than local version ({2}). This is not allowed.",
                        "", server_version, imported_version),
            fmt::format("Die Version der Theme auf dem Server ({1}) ist ist größer als die lokale version ({2}). "
                        "Das darf nicht sein.",
                        "", server_version, imported_version)};
}

}  // namespace

hueloom_vault::~hueloom_vault() { stop_download_themes(); }

std::shared_ptr<hueloom_vault> hueloom_vault::get_instance()
{
    static const std::shared_ptr<hueloom_vault> vault = std::make_shared<hueloom_vault>();
    return vault;
}

std::shared_ptr<hueloom_theme_collection_v1> hueloom_vault::get_theme_collection()
{
    std::lock_guard guard(collection_mutex);
    if (!collection) {
        auto made = std::make_shared<hueloom_theme_collection_v1>();
        made->set_default_theme(import_theme_from_resources(builtin_theme_resource));
        collection = std::move(made);
    }
    return collection;
}

std::shared_ptr<hueloom_theme_v1> hueloom_vault::import_theme_from_resources(const std::string& name)
{
    auto theme = std::make_shared<hueloom_theme_v1>();
    std::vector<uint8_t> bytes;
    if (!iutils::get_instance().get_resource(name, bytes))
        return nullptr;
    std::string problem;
    if (!hueloom_theme_file_serializer_v1::read_theme_from_bytes(*theme, bytes, problem))
        log("Built-in theme resource '{}' is not a readable theme file: {}", name, problem);
    return theme;
}

std::string hueloom_vault::get_hueloom_appdata_folder_path()
{
    iutils& utils = iutils::get_instance();
    const std::string common = utils.get_common_directory();
    if (common.empty())
        return {};
    return common + utils.get_path_separator() + appdata_folder_name;
}

std::string hueloom_vault::get_appdata_path_of_theme(unsigned int uid)
{
    const std::string folder = get_hueloom_appdata_folder_path();
    if (folder.empty())
        return {};
    return (fs::path(folder) / hueloom_theme_file_serializer_v1::unsignedIntToHexWithPrefixAndSuffix(uid, "theme_", ".hlt"))
        .string();
}

bool hueloom_vault::store_theme_in_appdata(std::shared_ptr<const hueloom_theme_v1> theme)
{
    if (!theme)
        return false;
    const std::string path = get_appdata_path_of_theme(theme->uid);
    if (path.empty()) {
        log("Theme {:08x} not stored: there is no home directory", theme->uid);
        return false;
    }
    create_private_folders(fs::path(path).parent_path().string());
    std::string problem;
    if (!hueloom_theme_file_serializer_v1::write_theme_to_file(*theme, path, problem)) {
        log("Theme {:08x} not stored: {}", theme->uid, problem);
        return false;
    }
    return true;
}

void hueloom_vault::fill_theme_collection_from_appdata(const std::set<uint32_t>& uids, bool take_all)
{
    const std::shared_ptr<hueloom_theme_collection_v1> themes = get_theme_collection();
    const std::string folder = get_hueloom_appdata_folder_path();
    std::error_code error;
    if (folder.empty() || !fs::is_directory(folder, error))
        return;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path& path = entry->path();
        if (path.extension() != ".hlt")
            continue;
        auto theme = std::make_shared<hueloom_theme_v1>();
        std::string problem;
        if (!hueloom_theme_file_serializer_v1::read_theme_from_file(*theme, path.string(), problem)) {
            log("Skipping theme file '{}': {}", path.string(), problem);
            continue;
        }
        if (take_all || uids.contains(theme->uid))
            themes->add_or_replace_theme(std::move(theme));
        else
            themes->remove_theme(theme->uid);
    }
    if (error)
        log("Reading the theme folder '{}' stopped: {}", folder, error.message());
}

std::shared_ptr<hueloom_theme_v1> hueloom_vault::import_theme_from_folder(const std::string& folder,
                                                                          std::string& english_error,
                                                                          std::string& german_error)
{
    return import_theme_folder(folder, english_error, german_error);
}

bool hueloom_vault::import_theme_and_store_to_appdata(const std::string& folder, language_id language,
                                                      std::pair<std::string, unsigned int>& result, std::string& error)
{
    try {
        std::string english;
        std::string german;
        const std::shared_ptr<const hueloom_theme_v1> theme = import_theme_from_folder(folder, english, german);
        error = localized_pair(language, english, german);
        if (!theme)
            return false;
        const uint32_t server_version = get_server_version_of_theme(theme->uid);
        if (theme->version < server_version) {
            const auto [english_conflict, german_conflict] = server_version_conflict(server_version, theme->version);
            log_text(english_conflict);
            error = localized_pair(language, english_conflict, german_conflict);
            return false;
        }
        get_theme_collection()->add_or_replace_theme(theme);
        store_theme_in_appdata(theme);
        result = {theme->name, theme->uid};
        return true;
    } catch (const std::exception& failure) {
        log_text(fmt::format("Theme import from '{}' failed: {}", folder, failure.what()));
    } catch (...) {
        log_text("Theme import from '" + folder + "' failed: unknown exception");
    }
    error = localized_pair(language, unexpected_import_error_en, unexpected_import_error_de);
    return false;
}

std::string hueloom_vault::get_current_timestamp() { return ctime_text(std::time(nullptr)); }

}  // namespace vl1
