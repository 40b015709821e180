#include "queue_measurement.h"

#include "core/alarm_queue.h"
#include "core/queue_filler.h"
#include "core/record_walk.h"
#include "core/test_agent.h"
#include "model/title_order.h"
#include "propertylist/binary_property_list.h"
#include "propertylist/known_keys.h"
#include "support/sample_records.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

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

/// Nothing of what is let go of is freed within the time that is measured.
class KeepingDisposal final : public Disposal {
public:
    void dispose(std::shared_ptr<void> unneeded) override { m_kept.push_back(std::move(unneeded)); }
    void clear() { m_kept.clear(); }

private:
    std::vector<std::shared_ptr<void>> m_kept;
};

/// An agent over fakes, at the present moment.
class Agent : private TestDesktop {
public:
    Agent() : TestDesktop(presentMoment), m_agent(platform(m_disposal), testIdentity()) {
        m_agent.applicationDidFinishLaunching();
    }

    void push(Array records, bool delta) { m_agent.alarmsUpdated(std::move(records), delta); }
    /// What a new day asks for, and another zone.
    void refresh() { systemChangeNotices.changeTimeZoneFrom(TimeZone::gmt()); }
    void save() { powerNotices.shutDown(); }
    void cancelShutdown() { powerNotices.cancelShutdown(); }
    void freeWhatIsDisposed() { m_disposal.clear(); }
    [[nodiscard]] std::size_t pendingCount() const { return m_agent.pendingAlarmCount(); }

private:
    KeepingDisposal m_disposal;
    PlenzoAlarm m_agent;
};

/// Of two alarms of each record, about half are due within the days that the queue holds.
void checkQueue(benchmark::State& state, std::size_t pendingCount, std::size_t count) {
    const double share = double(pendingCount) / double(2 * count);
    if (share < 0.4 || share > 0.6) {
        state.SkipWithError("the queue is not complete");
    }
}

std::vector<EventDict> eventDictsOf(const Array& records) {
    std::vector<EventDict> eventDicts;
    for (const Value& record : records) {
        eventDicts.push_back(std::make_shared<Dictionary>(*record.dictionary()));
    }
    return eventDicts;
}

/// From records in memory to the sorted queue.
void computeQueue(benchmark::State& state, const Array& records) {
    const auto eventDicts = eventDictsOf(records);
    const TitleOrder titles("en_US");
    const FiredAlarms firedAlarms;
    const AlarmContext context{.now = presentMoment, .systemZone = zone("Europe/Berlin")};
    AlarmQueue queue(titles);
    for ([[maybe_unused]] auto iteration : state) {
        queue.clear();
        QueueFiller filler(queue, firedAlarms, std::nullopt, context);
        forEachGroup(eventDicts, [&filler](RecordGroup group) { filler.appendAlarmsOf(group); });
        queue.sort();
    }
    checkQueue(state, queue.size(), records.size());
}

/// A batch as the link hands it on, in place of one of the same size.
void processFullUpdate(benchmark::State& state, const Array& records) {
    const auto file = writeBinaryPropertyList(Value(records));
    Agent agent;
    agent.push(records, false);
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        agent.freeWhatIsDisposed();
        auto batch = readBinaryPropertyList(file);
        state.ResumeTiming();
        agent.push(std::move(*batch->mutableArray()), false);
    }
    checkQueue(state, agent.pendingCount(), records.size());
}

void refreshAtMidnight(benchmark::State& state, const Array& records) {
    Agent agent;
    agent.push(records, false);
    for ([[maybe_unused]] auto iteration : state) {
        agent.refresh();
    }
    checkQueue(state, agent.pendingCount(), records.size());
}

void processDelta(benchmark::State& state, const Array& records) {
    Agent agent;
    agent.push(records, false);
    std::size_t number = 0;
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        agent.freeWhatIsDisposed();
        number = (number + 7919) % records.size();
        const Dictionary notice{{keys::uid, *records[number].dictionary()->find(keys::uid)},
                                {keys::del, true}};
        Array delta{notice, records[number]};
        state.ResumeTiming();
        agent.push(std::move(delta), true);
    }
    checkQueue(state, agent.pendingCount(), records.size());
}

void saveState(benchmark::State& state, const Array& records) {
    Agent agent;
    agent.push(records, false);
    for ([[maybe_unused]] auto iteration : state) {
        agent.save();
        state.PauseTiming();
        agent.cancelShutdown();
        state.ResumeTiming();
    }
    checkQueue(state, agent.pendingCount(), records.size());
}

void writeRecords(benchmark::State& state, const Array& records) {
    for ([[maybe_unused]] auto iteration : state) {
        auto file = writeBinaryPropertyList(Value(records));
        benchmark::DoNotOptimize(file);
    }
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
            [&records](benchmark::State& state) { computeQueue(state, records); });
    }
    const std::pair<const char*, void (*)(benchmark::State&, const Array&)> workOfTheAgent[] = {
        {"full update", processFullUpdate},
        {"midnight refresh", refreshAtMidnight},
        {"delta", processDelta},
        {"save", saveState},
        {"writing", writeRecords}};
    for (const auto& [name, work] : workOfTheAgent) {
        add(name, [work = work, &records = m_records[recordCount]](benchmark::State& state) {
            work(state, records);
        });
    }
}

std::vector<Figure> QueueMeasurement::figures(const BestTimes& times) const {
    return {comparison("100,000 records to a sorted queue, over the floor",
                       times.of(nameOf("queue", recordCount)),
                       times.of(nameOf("floor", recordCount)), 8),
            growth(times),
            comparison("a full update of 100,000, over the queue alone", times.of("full update"),
                       times.of(nameOf("queue", recordCount)), 3),
            comparison("a midnight refresh of 100,000, over the queue alone",
                       times.of("midnight refresh"), times.of(nameOf("queue", recordCount)), 3),
            comparison("a save of 100,000, over writing them", times.of("save"),
                       times.of("writing"), 2),
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
