#pragma once

#include "best_times.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// A ratio, or a size, that must not go over its limit. NaN when it could not be measured.
struct Figure {
    std::string what;
    double value;
    double limit;
    /// What else the value is understood by; may be empty.
    std::string note;

    [[nodiscard]] bool isMet() const { return value <= limit; }
};

/// One part's benchmarks, which run in turns with those of the other parts, and the figures that
/// are made of their best times.
class Measurement {
public:
    Measurement() = default;
    Measurement(const Measurement&) = delete;
    Measurement& operator=(const Measurement&) = delete;
    virtual ~Measurement() = default;

    /// They refer to this object, which has to outlive them.
    virtual void registerBenchmarks() = 0;
    [[nodiscard]] virtual std::vector<Figure> figures(const BestTimes& times) const = 0;

protected:
    template <typename Function>
    static benchmark::internal::Benchmark* add(const std::string& name, Function function) {
        return benchmark::RegisterBenchmark(name.c_str(), function)->Unit(benchmark::kMillisecond);
    }
    /// NaN when one of both did not run.
    static double ratio(double time, double otherTime) {
        return time > 0 && otherTime > 0 ? time / otherTime : std::nan("");
    }
    /// Both in milliseconds.
    static Figure comparison(std::string what, double time, double otherTime, double limit) {
        std::array<char, 64> note{};
        std::snprintf(note.data(), note.size(), "%.4g ms over %.4g ms", time, otherTime);
        return {std::move(what), ratio(time, otherTime), limit, note.data()};
    }
};

} // namespace plenzo
