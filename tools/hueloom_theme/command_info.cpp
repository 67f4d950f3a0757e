// hueloom-theme info FILE.hlt
#include "tools/hueloom_theme/theme_command.h"
#include "tools/hueloom_theme/theme_file_report.h"

namespace vl1::theme_tool {

int run_info_command(const std::vector<std::string>& arguments, command_io& io)
{
    if (const int code = check_operands("info", arguments, 1, io); code != exit_ok)
        return code;
    const std::string& path = arguments[0];
    const theme_file_reading reading = read_theme_file(path);
    if (!reading.readable) {
        io.err << "hueloom-theme info: cannot read '" << path << "': " << reading.problem << "\n";
        return exit_failure;
    }
    io.out << "File:             " << path << "\n";
    print_theme_details(reading, io.out);
    return exit_ok;
}

}  // namespace vl1::theme_tool
