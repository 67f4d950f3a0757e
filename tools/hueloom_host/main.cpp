// hueloom-host: drives OFX bundles with the project's own host.
//   hueloom-host describe [PATH]   list what each plug-in on PATH declares
// PATH is a ':'-separated list of folders or bundles; without it the folders hueloom-render
// searches: OFX_PLUGIN_PATH, the build's OFX/Plugins, /usr/OFX/Plugins. Exit codes: 0 ok,
// 1 a bundle failed, 2 usage, 130/143 SIGINT/SIGTERM.
#include "host/loader.h"
#include "tools/common/stop_signals.h"
#include "tools/hueloom_host/describe_command.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr const char* usage =
    "usage: hueloom-host describe [PATH]\n"
    "  PATH  ':'-separated folders or .ofx.bundle paths (default, as hueloom-render: $OFX_PLUGIN_PATH,\n"
    "        the build's OFX/Plugins, /usr/OFX/Plugins)\n";

/// Where hueloom-render looks: the build's own plug-in folder goes before /usr/OFX/Plugins.
std::vector<std::filesystem::path> default_folders()
{
    std::vector<std::filesystem::path> folders = vl1::ofxhost::default_search_path();
    folders.insert(folders.end() - 1, HUELOOM_HOST_PLUGIN_DIR);
    return folders;
}

}  // namespace

int main(int argc, char** argv)
{
    vl1::tools::install_stop_signals();
    try {
        const std::string command = argc > 1 ? argv[1] : "";
        if (command == "-h" || command == "--help" || command == "help") {
            std::cout << usage;
            return 0;
        }
        if (command != "describe" || argc > 3) {
            std::cerr << usage;
            return 2;
        }
        const auto folders = argc == 3 ? vl1::ofxhost::split_search_path(argv[2]) : default_folders();
        if (folders.empty()) {
            std::cerr << "hueloom-host: PATH names no folder\n" << usage;
            return 2;
        }
        return vl1::host_tool::describe_bundles(folders, std::cout, std::cerr);
    } catch (const std::exception& e) {
        std::cerr << "hueloom-host: " << e.what() << "\n";
        return 1;
    }
}
