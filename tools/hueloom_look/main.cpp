// hueloom-look: opens the plug-in's editor on a still, without an OFX host, and writes the
// look the user leaves in it. See --help.
#include <unistd.h>

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "tools/hueloom_render/render_command.h"

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    return vl1::render_tool::run_render_command(args, std::cout, std::cerr, isatty(STDERR_FILENO) != 0,
                                              HUELOOM_RENDER_PLUGIN_DIR, true);
}
