// The plug-ins a host offers, found the way hosts find them at start-up: every bundle on the
// search path scanned (Load, Describe, Unload) and its description kept. The same plug-in may
// sit in two folders of the path (a studio copy and a user copy, or one folder listed twice);
// a host offers it once.
#pragma once

#include "host/host.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vl1::ofxhost {

struct catalogue_entry {
    std::filesystem::path bundle;
    int index = 0;  // of the plug-in within its bundle
    plugin_info info;
};

struct catalogue {
    std::vector<catalogue_entry> plugins;  // in the order found
    std::vector<std::string> problems;     // bundles or plug-ins that failed to scan
};

/// Scans every plug-in of every bundle in `folders`. Of plug-ins with the same identifier and
/// major version the one with the highest minor version is offered, the first found among
/// equals; the others are left out, not reported as problems.
catalogue scan_plugins(host& h, const std::vector<std::filesystem::path>& folders);

/// The entry for `identifier`, or null.
const catalogue_entry* find_plugin(const catalogue& c, const std::string& identifier);

}  // namespace vl1::ofxhost
