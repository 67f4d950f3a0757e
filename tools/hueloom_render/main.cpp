// hueloom-render: grades images, sequences and LUTs through the Hueloom OFX plug-in, loaded
// and driven by the project's own host. See --help.
#include "tools/common/stop_signals.h"
#include "tools/hueloom_render/render_command.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    // A batch render never opens the plug-in's editor: pressing "Open GUI" to save the state
    // then renders at once, as in a host without a display.
    unsetenv("DISPLAY");
    vl1::tools::install_stop_signals();
    const std::vector<std::string> args(argv + 1, argv + argc);
    return vl1::render_tool::run_render_command(args, std::cout, std::cerr, isatty(STDERR_FILENO) != 0,
                                              HUELOOM_RENDER_PLUGIN_DIR);
}
