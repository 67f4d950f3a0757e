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
        const std::string& name = run.run_name.function_name;
        const auto record = [&](figures& into, double value) {
            if (run.run_type == Run::RT_Iteration)
                into.single[name] = value;
            else if (run.aggregate_name == "median")
                into.medians[name] = value;
        };
        record(seconds, run.GetAdjustedRealTime() * seconds_per_unit(run.time_unit));
        if (const auto r = run.counters.find("ratio"); r != run.counters.end())
            record(ratios, r->second.value);
    }
    ConsoleReporter::ReportRuns(runs);
}

std::optional<double> figure_collector::figures::find(const std::string& name) const
{
    if (const auto m = medians.find(name); m != medians.end())
        return m->second;
    if (const auto s = single.find(name); s != single.end())
        return s->second;
    return std::nullopt;
}

std::optional<double> figure_collector::seconds_per_iteration(const std::string& name) const
{
    return seconds.find(name);
}

std::optional<double> figure_collector::ratio(const std::string& name) const
{
    return ratios.find(name);
}

}  // namespace vl1::bench
