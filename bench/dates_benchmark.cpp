// What an alarm computation asks of dates, once a record.

#include "dates/calendar_date.h"
#include "dates/date_text.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

namespace plenzo {
namespace {

const char* const zoneNames[] = {"Universal", "Europe/Berlin", "America/New_York",
                                 "Africa/Casablanca"};

TimeZone zoneOf(const benchmark::State& state) {
    return TimeZone::named(zoneNames[state.range(0)]).value_or(TimeZone::universal());
}

/// Dates of the two years after 2024-06-01 in an order that no lookup can guess.
std::vector<CalendarDate> manyDates(const TimeZone& timeZone) {
    std::vector<CalendarDate> dates;
    std::uint32_t chance = 12345;
    for (int count = 0; count < 4096; ++count) {
        chance = chance * 1664525 + 1013904223;
        dates.emplace_back(Instant(738'892'800.0 + chance % (730 * 86400)), timeZone);
    }
    return dates;
}

template <typename Operation>
void run(benchmark::State& state, const Operation& operation) {
    const auto dates = manyDates(zoneOf(state));
    std::size_t index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(operation(dates[index++ % dates.size()]));
    }
    state.SetLabel(zoneNames[state.range(0)]);
}

void readFields(benchmark::State& state) {
    run(state, [](const CalendarDate& date) { return date.fields(); });
}
BENCHMARK(readFields)->DenseRange(0, 3);

void buildFromFields(benchmark::State& state) {
    const auto zone = zoneOf(state);
    run(state, [&zone](const CalendarDate& date) {
        const auto day = static_cast<std::int64_t>(date.instant().secondsSinceReferenceDate()) % 28;
        return CalendarDate::dateWithYear(2025, 1 + day % 12, 1 + day, 9, 30, 0, false, zone);
    });
}
BENCHMARK(buildFromFields)->DenseRange(0, 3);

void localTimeFromFloatingTime(benchmark::State& state) {
    const auto zone = zoneOf(state);
    run(state, [&zone](const CalendarDate& date) { return date.localTimeFromFloatingTime(zone); });
}
BENCHMARK(localTimeFromFloatingTime)->DenseRange(0, 3);

void addADay(benchmark::State& state) {
    run(state, [](const CalendarDate& date) { return date.dateByAddingComponents({.day = 1}); });
}
BENCHMARK(addADay)->DenseRange(0, 3);

void daysFromDate(benchmark::State& state) {
    run(state, [](const CalendarDate& date) {
        return date.calendar().daysFromDate(Instant(738'892'800.0), date.instant());
    });
}
BENCHMARK(daysFromDate)->DenseRange(0, 3);

void archiveAndUnarchive(benchmark::State& state) {
    run(state, [](const CalendarDate& date) {
        return unarchiveFromString(archiveToString(date), TimeZone::universal());
    });
}
BENCHMARK(archiveAndUnarchive)->DenseRange(0, 3);

} // namespace
} // namespace plenzo

BENCHMARK_MAIN();
