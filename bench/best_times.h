#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// Keeps the best time of each benchmark, the one that other programs disturbed least.
class BestTimes : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(),
                             run.error_message.c_str());
            } else if (run.run_type == Run::RT_Iteration) {
                keepBest(run.benchmark_name(), timeOf(run));
            }
        }
    }

    /// In the unit of the benchmark; 0 when it did not run.
    [[nodiscard]] double of(const std::string& name) const {
        for (const auto& [known, time] : m_best) {
            if (known == name || known.starts_with(name + "/")) {
                return time;
            }
        }
        return 0;
    }

private:
    /// Of the processor; where a benchmark tells its time itself, that.
    static double timeOf(const Run& run) {
        const bool tellsItself = run.benchmark_name().ends_with("/manual_time");
        return tellsItself ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    }
    void keepBest(const std::string& name, double time) {
        const auto [best, isFirst] = m_best.emplace(name, time);
        best->second = std::min(best->second, time);
    }

    std::map<std::string, double> m_best;
};

/// Runs the registered benchmarks in turns, so that what disturbs one of them disturbs all.
inline BestTimes runInTurns(int argc, char** argv, std::string repetitions) {
    std::string inTurns = "--benchmark_enable_random_interleaving=true";
    repetitions.insert(0, "--benchmark_repetitions=");
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, {repetitions.data(), inTurns.data()});
    int argumentCount = static_cast<int>(arguments.size());
    benchmark::Initialize(&argumentCount, arguments.data());
    BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    return times;
}

} // namespace plenzo
