// hueloom-chart: writes a test chart for looking at what a grade does. See --help.
#include "tools/hueloom_chart/chart_command.h"

#include <iostream>

int main(int argc, char** argv)
{
    return hueloom_chart::run_chart_command({argv + 1, argv + argc}, std::cout, std::cerr);
}
