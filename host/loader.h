// Finding OFX bundles and opening their binaries. A bundle is a folder NAME.ofx.bundle whose
// shared object is Contents/Linux-x86-64/NAME.ofx. Opened libraries stay loaded for the life of
// the process (plug-ins keep suite pointers and static state), unless release_library is asked.
#pragma once

#include "ofx/api/ofx_core.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vl1::ofxhost {

/// Splits a ':'-separated list of folders, dropping empty entries.
std::vector<std::filesystem::path> split_search_path(const std::string& list);

/// The folders a host searches: those in OFX_PLUGIN_PATH, then /usr/OFX/Plugins.
std::vector<std::filesystem::path> default_search_path();

/// Every bundle in these folders and their subfolders (bundles aren't searched inside),
/// sorted by path within each folder; folders that don't exist are skipped. A path that is
/// itself a bundle is taken as it is.
std::vector<std::filesystem::path> find_bundles(const std::vector<std::filesystem::path>& folders);

/// NAME.ofx.bundle/Contents/Linux-x86-64/NAME.ofx.
std::filesystem::path bundle_binary(const std::filesystem::path& bundle);

/// An opened bundle binary with its two entry points.
class library {
public:
    /// Opens the bundle's binary, or returns the one opened before. Throws host_error naming
    /// the path for a missing bundle or binary, a failed dlopen, or missing entry points.
    static std::shared_ptr<library> open(const std::filesystem::path& bundle);
    ~library();
    library(const library&) = delete;
    library& operator=(const library&) = delete;

    const std::filesystem::path& bundle() const { return bundle_path; }
    int plugin_count() const;
    /// The nth plug-in record, checked: throws host_error for an index out of range, a null
    /// record, an API other than "OfxImageEffectPluginAPI" version 1, or missing functions.
    OfxPlugin* plugin(int index) const;

private:
    library(std::filesystem::path bundle, void* handle);

    std::filesystem::path bundle_path;
    void* dl_handle;
    OfxGetNumberOfPluginsFn get_plugin_count = nullptr;
    OfxGetPluginFn get_plugin = nullptr;
};

/// Lets the bundle's binary be closed once no plug-in or instance uses it any more.
void release_library(const std::filesystem::path& bundle);

}  // namespace vl1::ofxhost
