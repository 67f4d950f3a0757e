// Where themes live: the theme collection of the process, the app-data folder of theme
// files, the built-in theme among the bundle's resources, folder import and the hooks of the
// theme download client.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>

#include "color/hueloom_theme_v1.h"
#include "framework/types.h"
#include "themes/hueloom_theme_collection_v1.h"
#include "themes/theme_download_client.h"

namespace vl1 {

/// The built-in theme among the bundle's resources.
inline constexpr const char* builtin_theme_resource = "theme_00000001.hlt";
/// Folder of theme files under iutils::get_common_directory().
inline constexpr const char* appdata_folder_name = "Hueloom";
/// Identifies the product towards the theme server.
inline constexpr const char* theme_server_product_id = "Qx7tLm2D";

class hueloom_vault {
public:
    hueloom_vault() = default;
    /// Stops a running download first.
    ~hueloom_vault();
    hueloom_vault(const hueloom_vault&) = delete;
    hueloom_vault& operator=(const hueloom_vault&) = delete;

    /// The one vault of the process, made on first use and kept until the process ends.
    static std::shared_ptr<hueloom_vault> get_instance();

    /// The collection, made on first call with the built-in theme as its default theme (a
    /// missing resource leaves it without one). Thread-safe.
    std::shared_ptr<hueloom_theme_collection_v1> get_theme_collection();

    /// A theme read from the bundle resource `name`; empty if the resource is missing. A
    /// resource that doesn't read as a theme file gives a new, empty theme (and a log line).
    std::shared_ptr<hueloom_theme_v1> import_theme_from_resources(const std::string& name);

    /// iutils' common directory + "/Hueloom" ($HOME/Varnlight/Hueloom); empty without a home
    /// directory.
    std::string get_hueloom_appdata_folder_path();

    /// The theme's file in the app-data folder, "theme_<uid as 8 hex digits>.hlt".
    std::string get_appdata_path_of_theme(unsigned int uid);

    /// Writes the theme as a theme file into the app-data folder (created with its parents),
    /// replacing the file of that uid through a temporary file and a rename. An empty
    /// reference does nothing. False, with a log line, if the file could not be written;
    /// the former file then stays as it was.
    bool store_theme_in_appdata(std::shared_ptr<const hueloom_theme_v1> theme);

    /// Reads every "*.hlt" file of the app-data folder, in directory order; a file that
    /// isn't a readable theme file is skipped with a log line naming it. A theme whose uid is
    /// in `uids`, or any theme when `take_all`, is added to or replaces that uid in the
    /// collection; others are removed from it (their files stay). Themes no longer in the
    /// folder stay in the collection. Nothing happens if the folder doesn't exist.
    void fill_theme_collection_from_appdata(const std::set<uint32_t>& uids, bool take_all);

    /// Reads a prepared folder into a new theme (see theme_folder_import.h for theme.json and
    /// every failure text). On failure both texts are set and the result is empty. Changes
    /// nothing on disk nor in the collection. Never throws.
    std::shared_ptr<hueloom_theme_v1> import_theme_from_folder(const std::string& folder, std::string& english_error,
                                                               std::string& german_error);

    /// Imports `folder` and, unless the theme server has a higher version of its uid, adds
    /// it to the collection and stores it in the app-data folder. True with the theme's name
    /// and uid in `result` and an empty `error`; false with `error` in `language` (the
    /// import's texts; "Unexpected error." for anything else; or, when the server's version
    /// is higher, "Version of theme on server (S) is greater than local version (L). This is
    /// not allowed."). Nothing changes on a failure. Never throws.
    bool import_theme_and_store_to_appdata(const std::string& folder, language_id language,
                                           std::pair<std::string, unsigned int>& result, std::string& error);

    /// The current local time as ctime writes it, without the newline.
    static std::string get_current_timestamp();

    // The theme download client. Without a factory there is never a client: downloads do
    // nothing and report false, versions are 0 and the percentage is -1.0.

    /// How init_web_client makes a client.
    void set_web_client_factory(theme_download_client_factory factory);
    /// Replaces the client (the former one stops first) by a new one set up for `server_url`,
    /// the product identifier and the app-data folder.
    void init_web_client(const std::string& server_url);
    /// Keeps the client if it serves `server_url`, else makes one with the manifest at
    /// server_url + "/manifest.json"; asks it to fetch every uid of `uids` that the server has
    /// newer than the collection (a missing theme counts as version 0) and calls
    /// `on_finished` on the worker when that has run to its end. True if a download runs.
    bool download_themes(const std::string& server_url, const std::set<uint32_t>& uids, std::function<void()> on_finished);
    /// Stops a running download and waits for its worker.
    void stop_download_themes();
    /// The server's version of `uid`; 0 if unknown or without a client.
    uint32_t get_server_version_of_theme(unsigned int uid);
    /// 0.0..100.0 while downloading; -1.0 otherwise.
    float get_download_percentage();

private:
    std::shared_ptr<theme_download_client> current_client();

    std::mutex collection_mutex;
    std::shared_ptr<hueloom_theme_collection_v1> collection;  // guarded by collection_mutex

    // Only the pointer is guarded; the client locks itself, and calls into it run without
    // this lock so that a wait for its worker never blocks readers of the percentage.
    std::mutex client_mutex;
    theme_download_client_factory client_factory;
    std::shared_ptr<theme_download_client> client;
};

}  // namespace vl1
