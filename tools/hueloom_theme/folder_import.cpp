#include "tools/hueloom_theme/folder_import.h"

#include <ostream>

#include "themes/hueloom_vault.h"
#include "tools/hueloom_theme/log_capture.h"

namespace vl1::theme_tool {

folder_import_result import_folder(const std::string& folder)
{
    folder_import_result result;
    std::vector<std::string> logged;
    std::string german;
    {
        scoped_log_capture capture(logged);
        hueloom_vault vault;
        result.theme = vault.import_theme_from_folder(folder, result.error, german);
    }
    if (result.theme) {
        result.error.clear();
        return result;
    }
    if (result.error.empty())
        result.error = "Unexpected error.";
    for (std::string& line : logged)
        if (line != result.error)
            result.details.push_back(std::move(line));
    return result;
}

void print_import_failure(const folder_import_result& result, const char* command, std::ostream& err)
{
    err << "hueloom-theme " << command << ": " << result.error << "\n";
    for (const std::string& line : result.details)
        err << "  " << line << "\n";
}

}  // namespace vl1::theme_tool
