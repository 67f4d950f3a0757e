// hueloom-theme: the command for people who make themes. See command_dispatch.h.
#include <iostream>
#include <string>
#include <vector>

#include "tools/common/stop_signals.h"
#include "tools/hueloom_theme/command_dispatch.h"

int main(int argc, char** argv)
{
    vl1::tools::install_stop_signals();
    std::vector<std::string> arguments;
    try {
        arguments.assign(argv + 1, argv + argc);
    } catch (...) {
        return vl1::theme_tool::exit_failure;
    }
    vl1::theme_tool::command_io io{std::cout, std::cerr};
    const int code = vl1::theme_tool::dispatch_theme_command(arguments, io);
    std::cout.flush();
    return code;
}
