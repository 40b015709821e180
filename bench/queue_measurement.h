#pragma once

#include "measurement.h"
#include "propertylist/array.h"

#include <array>
#include <map>
#include <vector>

namespace plenzo {

/// From records in memory to the sorted queue, beside the least that has to be done: a loop over a
/// bare array of the same start and lead times, with a sort. And one changed record beside a full
/// update. Every record has two alarms, about half of which are due within the 14 days that the
/// queue looks ahead, and a start time of its own.
class QueueMeasurement final : public Measurement {
public:
    QueueMeasurement();

    void registerBenchmarks() override;
    [[nodiscard]] std::vector<Figure> figures(const BestTimes& times) const override;

private:
    /// What a queue needs at the least.
    struct BareRecord {
        double startSeconds;
        std::array<double, 2> leadTimeSeconds;
    };
    using BareRecords = std::vector<BareRecord>;

    static Figure growth(const BestTimes& times);
    static BareRecords bareRecords(const Array& records);
    static void sortBareAlarms(benchmark::State& state, const BareRecords& records);

    std::map<std::size_t, Array> m_records;
    std::map<std::size_t, BareRecords> m_bareRecords;
};

} // namespace plenzo
