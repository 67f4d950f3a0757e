#include "bench/bench_results.h"

#include <unistd.h>

namespace vl1::bench {

double seconds_per_unit(benchmark::TimeUnit unit)
{
    switch (unit) {
    case benchmark::kNanosecond: return 1e-9;
    case benchmark::kMicrosecond: return 1e-6;
    case benchmark::kMillisecond: return 1e-3;
    case benchmark::kSecond: break;
    }
    return 1.0;
}

figure_collector::figure_collector() : ConsoleReporter(isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular) {}

void figure_collector::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.error_occurred)
            continue;
        const double seconds = run.GetAdjustedRealTime() * seconds_per_unit(run.time_unit);
        const std::string& name = run.run_name.function_name;
        if (run.run_type == Run::RT_Iteration)
            single[name] = seconds;
        else if (run.aggregate_name == "median")
            medians[name] = seconds;
    }
    ConsoleReporter::ReportRuns(runs);
}

std::optional<double> figure_collector::seconds_per_iteration(const std::string& name) const
{
    if (const auto m = medians.find(name); m != medians.end())
        return m->second;
    if (const auto s = single.find(name); s != single.end())
        return s->second;
    return std::nullopt;
}

}  // namespace vl1::bench
