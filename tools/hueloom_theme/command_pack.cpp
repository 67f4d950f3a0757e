// hueloom-theme pack FOLDER OUT.hlt
#include <filesystem>

#include <fmt/format.h>

#include "themes/hueloom_theme_file_serializer_v1.h"
#include "tools/hueloom_theme/folder_import.h"
#include "tools/hueloom_theme/theme_command.h"
#include "tools/hueloom_theme/theme_file_report.h"

namespace vl1::theme_tool {

int run_pack_command(const std::vector<std::string>& arguments, command_io& io)
{
    if (const int code = check_operands("pack", arguments, 2, io); code != exit_ok)
        return code;
    const std::string& output = arguments[1];
    std::error_code ignored;
    if (std::filesystem::is_directory(output, ignored)) {
        io.err << "hueloom-theme pack: '" << output << "' is a folder; name the theme file to write\n";
        return exit_failure;
    }

    const folder_import_result imported = import_folder(arguments[0]);
    if (!imported.theme) {
        print_import_failure(imported, "pack", io.err);
        return exit_failure;
    }
    std::string problem;
    if (!hueloom_theme_file_serializer_v1::write_theme_to_file(*imported.theme, output, problem)) {
        io.err << "hueloom-theme pack: " << problem << "\n";
        return exit_failure;
    }
    const hueloom_theme_v1& theme = *imported.theme;
    io.out << fmt::format("Packed \"{}\" (uid {}, version {}, {} wheel LUTs) into {}\n", theme.name,
                          uid_text(theme.uid), theme.version, theme.luts.size(), output);
    return exit_ok;
}

}  // namespace vl1::theme_tool
