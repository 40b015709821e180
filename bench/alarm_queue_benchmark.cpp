// From records in memory to the sorted queue, beside a plain loop over a bare array with a sort,
// and one changed record beside a full update. Prints the times and their ratios.

#include "best_times.h"
#include "core/alarm_queue.h"
#include "core/event_intake.h"
#include "model/title_order.h"
#include "propertylist/known_keys.h"
#include "support/fake_clock.h"
#include "support/fake_desktop.h"
#include "support/sample_records.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <memory>

namespace plenzo {
namespace {

constexpr std::size_t recordCount = 100000;
const Instant presentMoment(8.0e8);

/// What a queue needs at the least.
struct BareRecord {
    double startSeconds;
    std::array<double, 2> leadTimeSeconds;
};

struct BareAlarm {
    double fireSeconds;
    std::size_t record;
};

std::vector<BareRecord> bareRecords(const Array& records) {
    std::vector<BareRecord> bare;
    for (const Value& record : records) {
        const Dictionary& dictionary = *record.dictionary();
        const Array& reminders = *dictionary.arrayForKey(keys::rem);
        bare.push_back({dictionary.dateForKey(keys::date)->secondsSinceReferenceDate,
                        {reminders[0].dictionary()->doubleForKey(keys::rel),
                         reminders[1].dictionary()->doubleForKey(keys::rel)}});
    }
    return bare;
}

void sortBareAlarms(benchmark::State& state, const std::vector<BareRecord>& records) {
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

/// An intake with its queue.
class Intake {
public:
    void push(const Array& records, bool delta) {
        m_intake.processEventDicts(records, delta, std::nullopt);
    }
    /// What a new day asks for: the whole queue anew from the records that are there.
    void refresh() { m_intake.recomputeQueue(); }
    [[nodiscard]] std::size_t pendingCount() const { return m_queue.size(); }

private:
    FakeClock m_clock{presentMoment};
    FakeRegionalSettings m_settings{TimeZone::named("Europe/Berlin").value_or(TimeZone())};
    TitleOrder m_titles{"en_US"};
    AlarmQueue m_queue{m_titles};
    FakeDisposal m_disposal;
    EventIntake m_intake{{.queue = m_queue,
                          .clock = m_clock,
                          .regionalSettings = m_settings,
                          .disposal = m_disposal},
                         [] {}};
};

void processFullUpdate(benchmark::State& state, const Array& records) {
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        auto intake = std::make_unique<Intake>();
        state.ResumeTiming();
        intake->push(records, false);
        state.PauseTiming();
        if (intake->pendingCount() < records.size() / 2) {
            state.SkipWithError("the queue is not complete");
        }
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
    if (intake.pendingCount() < records.size() / 2) {
        state.SkipWithError("the queue is not complete");
    }
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
    if (intake.pendingCount() < records.size() / 2) {
        state.SkipWithError("the queue is not complete");
    }
}

void print(const char* what, double milliseconds, const char* otherName, double otherMilliseconds) {
    std::printf("%-44s %10.3f ms %9.4f x %s\n", what, milliseconds,
                milliseconds / otherMilliseconds, otherName);
}

} // namespace
} // namespace plenzo

int main(int argc, char** argv) {
    using namespace plenzo;
    const Array records = sampleRecords(recordCount);
    const auto bare = bareRecords(records);
    const auto add = [](const char* name, auto function) {
        return benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    };
    add("floor", [&](benchmark::State& state) { sortBareAlarms(state, bare); });
    add("full", [&](benchmark::State& state) { processFullUpdate(state, records); });
    add("refresh", [&](benchmark::State& state) { refreshQueue(state, records); });
    add("delta", [&](benchmark::State& state) { processDelta(state, records); });
    for (const std::size_t count : {std::size_t{1000}, std::size_t{10000}, std::size_t{1000000}}) {
        const std::string name = "refresh of " + std::to_string(count);
        add(name.c_str(), [records = sampleRecords(count)](benchmark::State& state) {
            refreshQueue(state, records);
        });
    }

    const BestTimes times = runInTurns(argc, argv, "5");
    print("a bare array of 100,000, sorted", times.of("floor"), "the floor", times.of("floor"));
    print("100,000 records to a sorted queue", times.of("refresh"), "the floor", times.of("floor"));
    print("the same from a batch that somebody else holds", times.of("full"), "the floor",
          times.of("floor"));
    print("one record of 100,000 replaced", times.of("delta"), "the full update", times.of("full"));
    for (const std::size_t count : {std::size_t{1000}, std::size_t{10000}, std::size_t{1000000}}) {
        const double scale = double(count) * std::log2(double(count)) /
                             (double(recordCount) * std::log2(double(recordCount)));
        const std::string name = std::to_string(count) + " records";
        print(name.c_str(), times.of("refresh of " + std::to_string(count)),
              "what n log n makes of 100,000", times.of("refresh") * scale);
    }
}
