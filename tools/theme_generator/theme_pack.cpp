#include "tools/theme_generator/theme_pack.h"

#include <filesystem>

#include <fmt/format.h>

#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"

namespace vl1::themegen {

std::shared_ptr<const hueloom_theme_v1> pack_theme_folder(const std::string& folder, const std::string& theme_path,
                                                          std::string& error)
{
    hueloom_vault vault;
    std::string english;
    std::string german;
    std::shared_ptr<const hueloom_theme_v1> theme = vault.import_theme_from_folder(folder, english, german);
    if (!theme) {
        error = english.empty() ? fmt::format("cannot import '{}'", folder) : english;
        return nullptr;
    }
    const std::filesystem::path target(theme_path);
    std::error_code ignored;
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path(), ignored);
    std::string problem;
    if (!hueloom_theme_file_serializer_v1::write_theme_to_file(*theme, theme_path, problem)) {
        error = problem;
        return nullptr;
    }
    return theme;
}

}  // namespace vl1::themegen
