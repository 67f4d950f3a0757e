#include "host/loader.h"

#include "host/status.h"
#include "ofx/api/ofx_image_effect.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>

namespace fs = std::filesystem;

namespace vl1::ofxhost {

namespace {

constexpr const char* bundle_suffix = ".ofx.bundle";
constexpr int max_search_depth = 8;

std::mutex libraries_mutex;
std::map<fs::path, std::shared_ptr<library>> libraries;

bool is_bundle(const fs::path& p)
{
    const std::string name = p.filename().string();
    return name.size() > std::strlen(bundle_suffix) &&
           name.compare(name.size() - std::strlen(bundle_suffix), std::string::npos, bundle_suffix) == 0;
}

void search(const fs::path& folder, int depth, std::vector<fs::path>& found)
{
    std::error_code ec;
    std::vector<fs::path> entries;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        if (it->is_directory(ec))
            entries.push_back(it->path());
    }
    std::sort(entries.begin(), entries.end());
    for (const auto& e : entries) {
        if (is_bundle(e)) {
            found.push_back(e);
        } else if (depth < max_search_depth) {
            search(e, depth + 1, found);
        }
    }
}

fs::path canonical_or_same(const fs::path& p)
{
    std::error_code ec;
    fs::path c = fs::weakly_canonical(p, ec);
    return ec ? p : c;
}

}  // namespace

std::vector<fs::path> split_search_path(const std::string& list)
{
    std::vector<fs::path> out;
    std::size_t start = 0;
    while (start <= list.size()) {
        const std::size_t end = std::min(list.find(':', start), list.size());
        if (end > start)
            out.emplace_back(list.substr(start, end - start));
        start = end + 1;
    }
    return out;
}

std::vector<fs::path> default_search_path()
{
    const char* env = std::getenv("OFX_PLUGIN_PATH");
    std::vector<fs::path> out = split_search_path(env ? env : "");
    out.emplace_back("/usr/OFX/Plugins");
    return out;
}

std::vector<fs::path> find_bundles(const std::vector<fs::path>& folders)
{
    std::vector<fs::path> found;
    for (const auto& folder : folders) {
        std::error_code ec;
        if (is_bundle(folder) && fs::is_directory(folder, ec)) {
            found.push_back(folder);
        } else {
            search(folder, 0, found);
        }
    }
    return found;
}

fs::path bundle_binary(const fs::path& bundle)
{
    std::string name = bundle.filename().string();
    if (is_bundle(bundle))
        name.resize(name.size() - std::strlen(bundle_suffix));
    return bundle / "Contents" / "Linux-x86-64" / (name + ".ofx");
}

library::library(fs::path bundle, void* handle) : bundle_path(std::move(bundle)), dl_handle(handle) {}

library::~library()
{
    if (dl_handle != nullptr)
        dlclose(dl_handle);
}

std::shared_ptr<library> library::open(const fs::path& bundle)
{
    const fs::path key = canonical_or_same(bundle);
    std::lock_guard lock(libraries_mutex);
    if (auto it = libraries.find(key); it != libraries.end())
        return it->second;

    std::error_code ec;
    if (!fs::is_directory(bundle, ec))
        throw host_error("no bundle at " + bundle.string());
    const fs::path binary = bundle_binary(bundle);
    if (!fs::is_regular_file(binary, ec))
        throw host_error("bundle " + bundle.string() + " has no binary " + binary.string());
    // Hosts keep plug-in code mapped until the process ends: a plug-in's process-wide objects
    // (and the threads of the libraries it uses) may still refer to it after the last close.
    void* handle = dlopen(binary.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (handle == nullptr) {
        const char* why = dlerror();
        throw host_error("cannot load " + binary.string() + ": " + (why ? why : "unknown error"));
    }
    std::shared_ptr<library> lib(new library(bundle, handle));
    lib->get_plugin_count = reinterpret_cast<OfxGetNumberOfPluginsFn>(dlsym(handle, "OfxGetNumberOfPlugins"));
    lib->get_plugin = reinterpret_cast<OfxGetPluginFn>(dlsym(handle, "OfxGetPlugin"));
    for (auto [fn, name] : {std::pair{lib->get_plugin_count != nullptr, "OfxGetNumberOfPlugins"},
                            std::pair{lib->get_plugin != nullptr, "OfxGetPlugin"}}) {
        if (!fn)
            throw host_error(binary.string() + " does not export " + name);
    }
    libraries[key] = lib;
    return lib;
}

int library::plugin_count() const { return get_plugin_count(); }

OfxPlugin* library::plugin(int index) const
{
    const int count = plugin_count();
    const std::string where = bundle_path.string() + ": plug-in " + std::to_string(index);
    if (index < 0 || index >= count) {
        throw host_error(where + " does not exist (the bundle has " + std::to_string(count) + ")");
    }
    OfxPlugin* p = get_plugin(index);
    if (p == nullptr)
        throw host_error(where + ": OfxGetPlugin returned null");
    const std::string api = p->pluginApi ? p->pluginApi : "(null)";
    if (api != kOfxImageEffectPluginApi || p->apiVersion != kOfxImageEffectPluginApiVersion) {
        throw host_error(where + " speaks API \"" + api + "\" version " + std::to_string(p->apiVersion) +
                         ", not \"" + kOfxImageEffectPluginApi + "\" version 1");
    }
    if (p->pluginIdentifier == nullptr)
        throw host_error(where + " has no identifier");
    if (p->setHost == nullptr || p->mainEntry == nullptr)
        throw host_error(where + " lacks setHost or mainEntry");
    return p;
}

void release_library(const fs::path& bundle)
{
    std::lock_guard lock(libraries_mutex);
    libraries.erase(canonical_or_same(bundle));
}

}  // namespace vl1::ofxhost
