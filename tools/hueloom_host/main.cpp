// hueloom-host: drives OFX bundles with the project's own host.
//   hueloom-host describe [PATH]   list what each plug-in on PATH declares
// PATH is a ':'-separated list of folders or bundles; without it OFX_PLUGIN_PATH and then
// /usr/OFX/Plugins are searched. Exit codes: 0 ok, 1 a bundle failed, 2 usage.
#include "host/loader.h"
#include "tools/hueloom_host/describe_command.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

namespace {

constexpr const char* usage =
    "usage: hueloom-host describe [PATH]\n"
    "  PATH  ':'-separated folders or .ofx.bundle paths (default: $OFX_PLUGIN_PATH, then /usr/OFX/Plugins)\n";

}  // namespace

int main(int argc, char** argv)
{
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
        const auto folders = argc == 3 ? ofxhost::split_search_path(argv[2]) : ofxhost::default_search_path();
        if (folders.empty()) {
            std::cerr << "hueloom-host: PATH names no folder\n" << usage;
            return 2;
        }
        return hueloom_host::describe_bundles(folders, std::cout, std::cerr);
    } catch (const std::exception& e) {
        std::cerr << "hueloom-host: " << e.what() << "\n";
        return 1;
    }
}
