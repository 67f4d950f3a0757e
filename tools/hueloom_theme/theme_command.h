// The subcommands of hueloom-theme. Each one lives in its own file and is listed once in
// command_registry.cpp; the dispatcher (command_dispatch.h) finds it by name, answers
// --help for it and runs it.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vl1::theme_tool {

/// Exit codes of the command, as shells and scripts expect them.
inline constexpr int exit_ok = 0;
inline constexpr int exit_failure = 1;
inline constexpr int exit_usage = 2;
/// pull: the theme server could not be reached at all.
inline constexpr int exit_unreachable = 3;

/// Where a subcommand writes: results to `out`, problems to `err`.
struct command_io {
    std::ostream& out;
    std::ostream& err;
};

struct theme_command {
    /// The word after "hueloom-theme".
    std::string_view name;
    /// Its arguments as the usage line shows them, e.g. "FOLDER OUT.hlt".
    std::string_view arguments;
    /// One line for the overview.
    std::string_view summary;
    /// A paragraph for "hueloom-theme NAME --help".
    std::string_view details;
    /// Runs with the arguments after the name (never containing --help); gives the exit
    /// code. Reports its own usage errors with exit_usage. May throw: the dispatcher catches.
    int (*run)(const std::vector<std::string>& arguments, command_io& io);
};

/// Every subcommand, in the order the overview lists them.
const std::vector<theme_command>& theme_commands();

/// `problem` and "usage: hueloom-theme NAME ARGUMENTS" on `io.err`; gives exit_usage.
int usage_error(std::string_view command_name, command_io& io, std::string_view problem);

/// exit_ok if `arguments` are exactly `count` operands and no option; otherwise a usage
/// message and exit_usage.
int check_operands(std::string_view command_name, const std::vector<std::string>& arguments, std::size_t count,
                   command_io& io);

int run_import_command(const std::vector<std::string>& arguments, command_io& io);
int run_pack_command(const std::vector<std::string>& arguments, command_io& io);
int run_info_command(const std::vector<std::string>& arguments, command_io& io);
int run_list_command(const std::vector<std::string>& arguments, command_io& io);
int run_serve_command(const std::vector<std::string>& arguments, command_io& io);
int run_pull_command(const std::vector<std::string>& arguments, command_io& io);

}  // namespace vl1::theme_tool
