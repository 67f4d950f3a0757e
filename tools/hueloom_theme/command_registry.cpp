#include "tools/hueloom_theme/theme_command.h"

namespace vl1::theme_tool {

const std::vector<theme_command>& theme_commands()
{
    static const std::vector<theme_command> commands{
        {"import", "FOLDER", "import a theme folder into the app-data folder",
         "Reads FOLDER/theme.json with its LUT files and background picture, as the plug-in's\n"
         "import does, and stores the theme as theme_<uid>.hlt in $HOME/Varnlight/Hueloom,\n"
         "replacing a stored theme of the same uid. Failures are reported with the plug-in's\n"
         "own messages.",
         run_import_command},
        {"pack", "FOLDER OUT.hlt", "import a theme folder and write it as a theme file",
         "Imports FOLDER as 'import' does, but writes the theme file to OUT.hlt instead of the\n"
         "app-data folder, e.g. to put it on a theme server.\n\n"
         "FOLDER holds theme.json, the LUT files (.cube, .3dl) and the wheel's background picture\n"
         "it names, all inside FOLDER. theme.json, in short:\n"
         "  {\"name\": \"Evening\", \"version\": 1, \"uid\": \"0a1b2c3d\" (needed from version 2),\n"
         "   \"wheel\": {\"background\": \"wheel.png\"},\n"
         "   \"luts\": [{\"name\": \"warm.cube\", \"rotation\": 0}, {\"name\": \"cool.cube\", \"rotation\": 180}],\n"
         "   \"post_processing\": {\"enabled\": true, \"lut\": \"finish.cube\"} (optional)}\n"
         "Every field, its type and whether it is required: docs/authoring.md of the Hueloom sources.",
         run_pack_command},
        {"info", "FILE.hlt", "describe a theme file",
         "Shows the uid, theme and format versions, name, wheel LUTs with their angles and what\n"
         "each does to mid grey, the post-processing LUT and the background picture's type and\n"
         "size.",
         run_info_command},
        {"list", "", "list the themes in the app-data folder",
         "Lists every file of $HOME/Varnlight/Hueloom: the themes the plug-in loads, the files\n"
         "that fail to read and why, and the files it ignores. Exits with 1 if a theme file\n"
         "fails to read.",
         run_list_command},
        {"serve", "DIR [--port N] [--bind ADDRESS] [--rate KIB]",
         "publish the theme files of a folder to the plug-ins of a studio",
         "Serves every theme file of DIR over HTTP where the plug-in's download client looks for\n"
         "it (manifest.json and <uid>.hlt by uid), on 127.0.0.1 port 8080 unless told otherwise\n"
         "(--bind 0.0.0.0 for the whole network; --port 0 picks a free port). The folder is read\n"
         "again at every request, so new versions are published as they are copied in. --rate\n"
         "sends theme files at no more than KIB KiB a second, to watch a plug-in's download run.\n"
         "Runs until interrupted.",
         run_serve_command},
        {"pull", "[--server URL] [UID...]", "download newer themes from a theme server now",
         "Fetches the server's manifest and downloads each named theme that the server has in a\n"
         "newer version than the app-data folder, as the plug-in's editor does. The server and\n"
         "the themes default to HUELOOM_THEME_SERVER and HUELOOM_WANTED_THEMES. Exits with 1 if\n"
         "a theme is not on the server or could not be downloaded, with 3 if the server could\n"
         "not be reached (its name not resolved, the connection refused or timed out).",
         run_pull_command},
    };
    return commands;
}

}  // namespace vl1::theme_tool
