// hueloom-theme serve DIR [--port N] [--bind ADDRESS] [--rate KIB]
#include <filesystem>
#include <iostream>

#include <fmt/format.h>

#include "tools/common/stop_signals.h"
#include "tools/hueloom_theme/theme_command.h"
#include "tools/hueloom_theme/theme_server.h"

namespace vl1::theme_tool {

namespace {

struct serve_options {
    std::string folder;
    std::string address = "127.0.0.1";
    int port = 8080;
    /// KiB a second for theme files; 0 is no limit.
    int rate_kib = 0;
};

/// `value` as a whole number from `low` to `high`; false if it is anything else.
bool read_number(const std::string& value, int low, int high, int& number)
{
    std::size_t used = 0;
    try {
        number = std::stoi(value, &used);
    } catch (const std::exception&) {
        return false;
    }
    return used == value.size() && number >= low && number <= high;
}

/// The options, or an error text.
std::string parse_serve_options(const std::vector<std::string>& arguments, serve_options& o)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& a = arguments[i];
        if (a == "--port" || a == "--bind" || a == "--rate") {
            if (i + 1 == arguments.size())
                return a + " needs a value";
            const std::string& value = arguments[++i];
            if (a == "--bind")
                o.address = value;
            else if (a == "--port" && !read_number(value, 0, 65535, o.port))
                return "--port needs a number from 0 to 65535 (0 picks a free port), not '" + value + "'";
            else if (a == "--rate" && !read_number(value, 1, 1 << 20, o.rate_kib))
                return "--rate needs a number of KiB a second from 1 to 1048576, not '" + value + "'";
        } else if (!a.empty() && a[0] == '-') {
            return "unknown option '" + a + "'";
        } else if (o.folder.empty()) {
            o.folder = a;
        } else {
            return "only one folder can be served";
        }
    }
    return o.folder.empty() ? "name the folder of theme files to serve" : "";
}

}  // namespace

int run_serve_command(const std::vector<std::string>& arguments, command_io& io)
{
    serve_options o;
    if (const std::string problem = parse_serve_options(arguments, o); !problem.empty())
        return usage_error("serve", io, problem);
    std::error_code ec;
    if (!std::filesystem::is_directory(o.folder, ec)) {
        io.err << "hueloom-theme serve: " << o.folder << " is not a folder\n";
        return exit_failure;
    }

    theme_server server(o.folder);
    server.set_rate(static_cast<std::size_t>(o.rate_kib) * 1024);
    std::string problem;
    const int port = server.bind(o.address, o.port, problem);
    if (port < 0) {
        io.err << fmt::format("hueloom-theme serve: cannot listen on {}:{}: {}\n", o.address, o.port, problem);
        return exit_failure;
    }
    const theme_catalogue catalogue = scan_theme_folder(o.folder);
    for (const std::string& line : catalogue.problems)
        io.err << "hueloom-theme serve: " << line << "\n";
    io.out << fmt::format("Serving {} themes from {} at http://{}:{}\n", catalogue.themes.size(), o.folder,
                          o.address, port);
    io.out.flush();
    server.on_request([&io](const std::string& line) { io.err << line << std::endl; });

    // SIGINT and SIGTERM are the way to end the server: it stops serving and exits with 0.
    tools::on_stop([&server] { server.stop(); });
    const bool served = server.listen();
    tools::clear_on_stop();
    if (!served && !tools::stop_requested()) {
        io.err << "hueloom-theme serve: the server stopped unexpectedly\n";
        return exit_failure;
    }
    return exit_ok;
}

}  // namespace vl1::theme_tool
