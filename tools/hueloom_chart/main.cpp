// hueloom-chart: writes a test chart for looking at what a grade does. See --help.
#include "tools/common/stop_signals.h"
#include "tools/hueloom_chart/chart_command.h"

#include <iostream>

int main(int argc, char** argv)
{
    vl1::tools::install_stop_signals();
    return vl1::chart_tool::run_chart_command({argv + 1, argv + argc}, std::cout, std::cerr);
}
