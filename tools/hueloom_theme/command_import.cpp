// hueloom-theme import FOLDER
#include <filesystem>

#include <fmt/format.h>

#include "themes/hueloom_vault.h"
#include "tools/hueloom_theme/folder_import.h"
#include "tools/hueloom_theme/log_capture.h"
#include "tools/hueloom_theme/theme_command.h"
#include "tools/hueloom_theme/theme_file_report.h"

namespace vl1::theme_tool {

int run_import_command(const std::vector<std::string>& arguments, command_io& io)
{
    if (const int code = check_operands("import", arguments, 1, io); code != exit_ok)
        return code;

    const folder_import_result imported = import_folder(arguments[0]);
    if (!imported.theme) {
        print_import_failure(imported, "import", io.err);
        return exit_failure;
    }
    const hueloom_theme_v1& theme = *imported.theme;

    hueloom_vault vault;
    const std::string path = vault.get_appdata_path_of_theme(theme.uid);
    if (path.empty()) {
        io.err << "hueloom-theme import: there is no home directory to store the theme in\n";
        return exit_failure;
    }
    std::error_code ignored;
    const bool replacing = std::filesystem::exists(path, ignored);
    const theme_file_reading before = replacing ? read_theme_file(path) : theme_file_reading{};

    std::vector<std::string> logged;
    bool stored = false;
    {
        scoped_log_capture capture(logged);
        stored = vault.store_theme_in_appdata(imported.theme);
    }
    if (!stored) {
        io.err << "hueloom-theme import: the theme could not be stored as " << path << "\n";
        for (const std::string& line : logged)
            io.err << "  " << line << "\n";
        return exit_failure;
    }

    io.out << fmt::format("Imported \"{}\" (uid {}, version {}, {} wheel LUTs) into {}\n", theme.name,
                          uid_text(theme.uid), theme.version, theme.luts.size(), path);
    if (before.readable)
        io.out << fmt::format("It replaces \"{}\" version {}.\n", before.theme.name, before.theme.version);
    else if (replacing)
        io.out << "It replaces a file of that name that did not read as a theme.\n";
    return exit_ok;
}

}  // namespace vl1::theme_tool
