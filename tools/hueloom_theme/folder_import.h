// The vault's folder import as the subcommands use it: with the plug-in's English message
// on failure and, where that message is only "Unexpected error.", the cause that the import
// logged, which a theme author needs to find the fault.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "color/hueloom_theme_v1.h"

namespace vl1::theme_tool {

struct folder_import_result {
    /// Null on failure.
    std::shared_ptr<const hueloom_theme_v1> theme;
    /// The import's English message; empty on success.
    std::string error;
    /// Lines that the import logged besides `error`: the cause behind an unexpected error.
    std::vector<std::string> details;
};

folder_import_result import_folder(const std::string& folder);

/// `result.error` and its details on `err`, prefixed by the subcommand's name.
void print_import_failure(const folder_import_result& result, const char* command, std::ostream& err);

}  // namespace vl1::theme_tool
