#include "queue_measurement.h"

#include "core/alarm_queue.h"
#include "core/event_intake.h"
#include "model/title_order.h"
#include "propertylist/known_keys.h"
#include "support/fake_clock.h"
#include "support/fake_desktop.h"
#include "support/sample_records.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>

namespace plenzo {

namespace {

constexpr std::size_t recordCount = 100000;
constexpr std::size_t fewRecords = 1000;
constexpr std::size_t manyRecords = 1000000;
const Instant presentMoment(8.0e8);

/// Spread over 30 days in no order, each start time once, since sorting by title is another matter.
Array recordsOfDifferentTimes(std::size_t count) {
    constexpr double spreadSeconds = 30 * 86400;
    constexpr std::size_t stride = 7919; // prime, so that no place comes back
    Array records;
    records.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        const std::size_t place = number * stride % count;
        const double offsetSeconds = std::floor(spreadSeconds * double(place) / double(count));
        const Instant start = presentMoment + offsetSeconds;
        Dictionary record = sampleRecord(number);
        record.set(keys::date, start.date());
        record.set(keys::end, (start + 3600).date());
        records.append(std::move(record));
    }
    return records;
}

/// An intake with its queue.
class Intake {
public:
    void push(const Array& records, bool delta) {
        m_intake.processEventDicts(records, delta, std::nullopt);
    }
    /// What a new day asks for: the whole queue anew from the records that are there.
    void refresh() {
        m_intake.processEvents(m_intake.allEventDicts().eventDicts(), false, std::nullopt);
    }
    [[nodiscard]] std::size_t pendingCount() const { return m_queue.size(); }

private:
    FakeClock m_clock{presentMoment};
    FakeRegionalSettings m_settings{TimeZone::named("Europe/Berlin").value_or(TimeZone())};
    TitleOrder m_titles{"en_US"};
    AlarmQueue m_queue{m_titles};
    EventIntake m_intake{{.queue = m_queue, .clock = m_clock, .regionalSettings = m_settings},
                         [] {}};
};

/// Of two alarms of each record, about half are due within the days that the queue holds.
void checkQueue(benchmark::State& state, const Intake& intake, const Array& records) {
    const double share = double(intake.pendingCount()) / double(2 * records.size());
    if (share < 0.4 || share > 0.6) {
        state.SkipWithError("the queue is not complete");
    }
}

void processFullUpdate(benchmark::State& state, const Array& records) {
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        auto intake = std::make_unique<Intake>();
        state.ResumeTiming();
        intake->push(records, false);
        state.PauseTiming();
        checkQueue(state, *intake, records);
        intake.reset();
        state.ResumeTiming();
    }
}

void refreshQueue(benchmark::State& state, const Array& records) {
    Intake intake;
    intake.push(records, false);
    for ([[maybe_unused]] auto iteration : state) {
        intake.refresh();
    }
    checkQueue(state, intake, records);
}

void processDelta(benchmark::State& state, const Array& records) {
    Intake intake;
    intake.push(records, false);
    std::size_t number = 0;
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        number = (number + 7919) % records.size();
        const Dictionary notice{{keys::uid, *records[number].dictionary()->find(keys::uid)},
                                {keys::del, true}};
        const Array delta{notice, records[number]};
        state.ResumeTiming();
        intake.push(delta, true);
    }
    checkQueue(state, intake, records);
}

std::string nameOf(const char* work, std::size_t count) {
    return std::string(work) + " of " + std::to_string(count);
}

} // namespace

QueueMeasurement::QueueMeasurement() {
    for (const std::size_t count : {fewRecords, recordCount, manyRecords}) {
        m_records[count] = recordsOfDifferentTimes(count);
        m_bareRecords[count] = bareRecords(m_records[count]);
    }
}

void QueueMeasurement::registerBenchmarks() {
    for (const auto& [count, records] : m_records) {
        add(nameOf("floor", count), [&bare = m_bareRecords[count]](benchmark::State& state) {
            sortBareAlarms(state, bare);
        });
        add(nameOf("queue", count),
            [&records](benchmark::State& state) { refreshQueue(state, records); });
    }
    const Array& records = m_records[recordCount];
    add("full update", [&records](benchmark::State& state) { processFullUpdate(state, records); });
    add("delta", [&records](benchmark::State& state) { processDelta(state, records); });
}

std::vector<Figure> QueueMeasurement::figures(const BestTimes& times) const {
    return {comparison("100,000 records to a sorted queue, over the floor",
                       times.of(nameOf("queue", recordCount)),
                       times.of(nameOf("floor", recordCount)), 8),
            growth(times),
            comparison("a delta of one record, over a full update of 100,000", times.of("delta"),
                       times.of("full update"), 0.01)};
}

/// Beside the growth of the floor, which sorts in n log n steps: what the caches cost at a million
/// is no matter of the steps, and the note tells what comes out without it.
Figure QueueMeasurement::growth(const BestTimes& times) {
    const auto growthOf = [&times](const char* work) {
        return ratio(times.of(nameOf(work, manyRecords)), times.of(nameOf(work, fewRecords)));
    };
    const auto few = double(fewRecords);
    const auto many = double(manyRecords);
    const double steps = many * std::log2(many) / (few * std::log2(few));
    std::array<char, 80> note{};
    std::snprintf(note.data(), note.size(), "over plain n log n: %.3g, the floor %.3g",
                  growthOf("queue") / steps, growthOf("floor") / steps);
    return {"its growth from 1,000 to 1,000,000, over the floor's n log n",
            growthOf("queue") / growthOf("floor"), 1, note.data()};
}

QueueMeasurement::BareRecords QueueMeasurement::bareRecords(const Array& records) {
    BareRecords bare;
    for (const Value& record : records) {
        const Dictionary& dictionary = *record.dictionary();
        const Array& reminders = *dictionary.arrayForKey(keys::rem);
        bare.push_back({dictionary.dateForKey(keys::date)->secondsSinceReferenceDate,
                        {reminders[0].dictionary()->doubleForKey(keys::rel),
                         reminders[1].dictionary()->doubleForKey(keys::rel)}});
    }
    return bare;
}

void QueueMeasurement::sortBareAlarms(benchmark::State& state, const BareRecords& records) {
    struct BareAlarm {
        double fireSeconds;
        std::size_t record;
    };
    const double now = presentMoment.secondsSinceReferenceDate();
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<BareAlarm> alarms;
        for (std::size_t index = 0; index < records.size(); ++index) {
            for (const double leadTime : records[index].leadTimeSeconds) {
                const double fire = records[index].startSeconds + leadTime;
                if (fire >= now && fire <= now + 14 * 86400.0) {
                    alarms.push_back({fire, index});
                }
            }
        }
        std::sort(alarms.begin(), alarms.end(), [](const BareAlarm& left, const BareAlarm& right) {
            return left.fireSeconds < right.fireSeconds;
        });
        benchmark::DoNotOptimize(alarms);
    }
}

} // namespace plenzo
