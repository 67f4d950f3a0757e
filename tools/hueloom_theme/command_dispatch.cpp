#include "tools/hueloom_theme/command_dispatch.h"

#include <algorithm>
#include <exception>

namespace vl1::theme_tool {

namespace {

bool is_help(const std::string& argument) { return argument == "--help" || argument == "-h"; }

void print_overview(std::ostream& out)
{
    out << "Usage: hueloom-theme COMMAND [ARGUMENTS]\n\n"
           "Tools for people who make Hueloom themes.\n\nCommands:\n";
    for (const theme_command& command : theme_commands()) {
        std::string usage = std::string(command.name);
        if (!command.arguments.empty())
            usage += " " + std::string(command.arguments);
        out << "  " << usage << std::string(usage.size() < 22 ? 22 - usage.size() : 1, ' ') << command.summary << "\n";
    }
    out << "\nRun 'hueloom-theme COMMAND --help' for more about a command.\n"
           "Exit codes: 0 success, 1 failure, 2 wrong usage, 3 theme server not reachable (pull),\n"
           "130 and 143 ended by SIGINT and SIGTERM.\n";
}

void print_command_help(const theme_command& command, std::ostream& out)
{
    out << "Usage: hueloom-theme " << command.name;
    if (!command.arguments.empty())
        out << " " << command.arguments;
    out << "\n\n" << command.details << "\n";
}

const theme_command* find_command(const std::string& name)
{
    const auto& commands = theme_commands();
    const auto it = std::find_if(commands.begin(), commands.end(), [&](const theme_command& c) { return c.name == name; });
    return it == commands.end() ? nullptr : &*it;
}

int dispatch(const std::vector<std::string>& arguments, command_io& io)
{
    if (arguments.empty()) {
        print_overview(io.err);
        return exit_usage;
    }
    const std::string& name = arguments.front();
    if (is_help(name) || name == "help") {
        const theme_command* topic = arguments.size() > 1 ? find_command(arguments[1]) : nullptr;
        if (topic)
            print_command_help(*topic, io.out);
        else
            print_overview(io.out);
        return exit_ok;
    }
    const theme_command* command = find_command(name);
    if (!command) {
        io.err << "hueloom-theme: unknown command '" << name << "'\n\n";
        print_overview(io.err);
        return exit_usage;
    }
    const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    if (std::any_of(rest.begin(), rest.end(), is_help)) {
        print_command_help(*command, io.out);
        return exit_ok;
    }
    return command->run(rest, io);
}

}  // namespace

int usage_error(std::string_view command_name, command_io& io, std::string_view problem)
{
    io.err << "hueloom-theme " << command_name << ": " << problem << "\n";
    io.err << "usage: hueloom-theme " << command_name;
    if (const theme_command* command = find_command(std::string(command_name)); command && !command->arguments.empty())
        io.err << " " << command->arguments;
    io.err << "\n";
    return exit_usage;
}

int dispatch_theme_command(const std::vector<std::string>& arguments, command_io& io) noexcept
{
    try {
        return dispatch(arguments, io);
    } catch (const std::exception& failure) {
        try {
            io.err << "hueloom-theme: unexpected failure: " << failure.what() << "\n";
        } catch (...) {
        }
    } catch (...) {
        try {
            io.err << "hueloom-theme: unexpected failure\n";
        } catch (...) {
        }
    }
    return exit_failure;
}

int check_operands(std::string_view command_name, const std::vector<std::string>& arguments, std::size_t count,
                   command_io& io)
{
    for (const std::string& argument : arguments)
        if (argument.size() > 1 && argument[0] == '-')
            return usage_error(command_name, io, "unknown option '" + argument + "'");
    if (arguments.size() != count)
        return usage_error(command_name, io,
                           arguments.size() < count ? "missing argument" : "too many arguments");
    return exit_ok;
}

}  // namespace vl1::theme_tool
