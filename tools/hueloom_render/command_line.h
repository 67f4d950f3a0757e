// The command line of hueloom-render: what each option asks for, parsed and checked for
// consistency, but not yet against the plug-in or the file system.
#pragma once

#include <string>
#include <vector>

namespace vl1::render_tool {

/// The plug-in the renderer drives unless --plugin-id names another.
inline constexpr const char* default_plugin_id = "com.varnlight.hueloomofx";

struct render_options {
    std::string input;                  // -i: a file or a frame pattern (#### or %04d)
    std::string output;                 // -o: likewise
    std::string frames;                 // --frames as given; empty: one still, or every frame found
    std::vector<std::string> settings;  // --set NAME=VALUE, in command-line order
    std::string state_in;               // --state-in FILE
    std::string state_out;              // --state-out FILE
    std::string theme;                  // --theme UID|NAME|FILE.hlt
    std::string preset;                 // --preset FILE.json
    std::string export_lut;             // --export-lut OUT.cube|OUT.3dl
    std::string depth;                  // --depth: 8, 16, half or float; empty: as the input
    std::string plugin_path;            // --plugin-path: ':'-separated folders or bundles
    std::string plugin_id = default_plugin_id;
    int threads = 0;                    // --threads; 0: every core
    int lut_size = 17;                  // --lut-size: points per axis of --export-lut
    bool quiet = false;
    bool verbose = false;
    bool list_params = false;           // --list-params: print the parameters and stop
    bool help = false;
    bool open_editor = false;           // hueloom-look: the editor opens on the input first
};

struct parsed_command {
    render_options options;
    std::string error;  // empty when the command line is usable
};

/// Reads the arguments behind the program name. Accepts "--opt value" and "--opt=value".
parsed_command parse_command_line(const std::vector<std::string>& args);

/// The --help texts of hueloom-render and hueloom-look.
extern const char* const render_usage;
extern const char* const look_usage;

}  // namespace vl1::render_tool
