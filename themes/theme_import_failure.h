// The failures of importing a theme folder, each with its English and German text.
#pragma once

#include <string>

namespace vl1 {

/// In the order in which the import meets them; file_outside_folder, met with the background
/// or a LUT, came later.
enum class theme_import_failure {
    theme_json_unreadable = 1,  // {0}: path of theme.json
    theme_json_read_error,      // {0}: the folder
    theme_json_syntax,          // {0}: RapidJSON's numeric error code
    name_missing,
    version_missing,
    version_below_one,
    uid_missing,
    uid_not_hexadecimal,        // {0}: the "uid" as written
    background_unreadable,      // {0}: path of the background image
    lut_unreadable,             // {0}: the LUT's name in theme.json
    not_self_consistent,
    file_outside_folder,        // {0}: the file's name in theme.json
};

/// Both texts of `failure` with {0} replaced by `argument` (ignored by texts without it).
void describe_import_failure(theme_import_failure failure, const std::string& argument, std::string& english,
                             std::string& german);

/// The texts for any failure that the table doesn't name.
inline constexpr const char* unexpected_import_error_en = "Unexpected error.";
inline constexpr const char* unexpected_import_error_de = "Unerwarteter Fehler.";

}  // namespace vl1
