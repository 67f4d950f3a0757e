// Collects the figures of a benchmark run while the console shows them, so that the run can
// close with ratios between measurements taken on the same frame in the same process.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vl1::bench {

class figure_collector : public benchmark::ConsoleReporter {
public:
    /// Colours only for a terminal, as Google Benchmark's own reporter does.
    figure_collector();

    void ReportRuns(const std::vector<Run>& runs) override;

    /// Real time of one iteration of the benchmark registered as `name`, in seconds: the
    /// median over repetitions when there were several. Empty when it didn't run or failed.
    std::optional<double> seconds_per_iteration(const std::string& name) const;
    /// The counter "ratio" of the benchmark `name`, the median over repetitions likewise.
    std::optional<double> ratio(const std::string& name) const;

private:
    struct figures {
        std::map<std::string, double> single;   // by name, from iteration runs
        std::map<std::string, double> medians;  // by name, from the "median" aggregate
        std::optional<double> find(const std::string& name) const;
    };
    figures seconds;
    figures ratios;
};

/// Unit prefix of a time unit, as a factor to seconds.
double seconds_per_unit(benchmark::TimeUnit unit);

}  // namespace vl1::bench
