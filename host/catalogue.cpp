#include "host/catalogue.h"

#include "host/status.h"

namespace vl1::ofxhost {

namespace {

catalogue_entry* same_plugin(catalogue& c, const plugin_info& info)
{
    for (auto& e : c.plugins) {
        if (e.info.identifier == info.identifier && e.info.version_major == info.version_major)
            return &e;
    }
    return nullptr;
}

void add_or_keep_newer(catalogue& c, catalogue_entry entry)
{
    catalogue_entry* known = same_plugin(c, entry.info);
    if (known == nullptr) {
        c.plugins.push_back(std::move(entry));
    } else if (entry.info.version_minor > known->info.version_minor) {
        *known = std::move(entry);
    }
}

}  // namespace

catalogue scan_plugins(host& h, const std::vector<std::filesystem::path>& folders)
{
    catalogue c;
    for (const auto& bundle : find_bundles(folders)) {
        try {
            const int count = h.plugin_count(bundle);
            for (int i = 0; i < count; ++i) {
                try {
                    plugin p = h.load_plugin(bundle, i);
                    add_or_keep_newer(c, catalogue_entry{bundle, i, p.scan()});
                } catch (const std::exception& e) {
                    c.problems.push_back(bundle.string() + ": " + e.what());
                }
            }
        } catch (const std::exception& e) {
            c.problems.push_back(e.what());
        }
    }
    return c;
}

const catalogue_entry* find_plugin(const catalogue& c, const std::string& identifier)
{
    for (const auto& e : c.plugins) {
        if (e.info.identifier == identifier)
            return &e;
    }
    return nullptr;
}

}  // namespace vl1::ofxhost
