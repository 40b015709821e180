#include "property_list_measurement.h"

#include "propertylist/binary_property_list.h"
#include "support/sample_records.h"

#include <optional>

namespace plenzo {

namespace {

constexpr std::size_t recordCount = 100000;
constexpr std::size_t manyRecords = 1000000;

using File = std::vector<std::byte>;

File fileOf(std::size_t count) {
    return writeBinaryPropertyList(sampleRecords(count));
}

void readRecords(benchmark::State& state, const File& file, std::size_t count) {
    while (state.KeepRunning()) {
        std::optional<Value> value = readBinaryPropertyList(file);
        state.PauseTiming();
        if (!value || value->array() == nullptr || value->array()->size() != count) {
            state.SkipWithError("the records are not there");
            break;
        }
        value.reset();
        state.ResumeTiming();
    }
}

void writeRecords(benchmark::State& state, const File& file) {
    const std::optional<Value> records = readBinaryPropertyList(file);
    while (state.KeepRunning()) {
        File written = writeBinaryPropertyList(records.value_or(Value()));
        state.PauseTiming();
        if (written != file) {
            state.SkipWithError("other bytes were written");
            break;
        }
        written = File();
        state.ResumeTiming();
    }
}

void letPlistlib(benchmark::State& state, Plistlib& plistlib, Plistlib::Work work) {
    while (state.KeepRunning()) {
        const std::optional<double> seconds = plistlib.secondsOf(work);
        if (!seconds) {
            state.SkipWithError("Python did not answer");
            break;
        }
        state.SetIterationTime(*seconds);
    }
}

std::string nameOf(const char* work, std::size_t count) {
    return std::string(work) + " of " + std::to_string(count);
}

} // namespace

PropertyListMeasurement::PropertyListMeasurement()
    : m_files{{recordCount, fileOf(recordCount)}, {manyRecords, fileOf(manyRecords)}},
      m_plistlib(m_files[recordCount]) {}

void PropertyListMeasurement::registerBenchmarks() {
    for (const auto& [count, file] : m_files) {
        add(nameOf("read", count), [&file = file, count = count](benchmark::State& state) {
            readRecords(state, file, count);
        });
        add(nameOf("write", count),
            [&file = file](benchmark::State& state) { writeRecords(state, file); });
    }
    const auto addPlistlib = [this](const char* name, Plistlib::Work work) {
        add(name, [this, work](benchmark::State& state) { letPlistlib(state, m_plistlib, work); })
            ->UseManualTime()
            ->Iterations(1);
    };
    addPlistlib("plistlib read", Plistlib::Work::Read);
    addPlistlib("plistlib write", Plistlib::Work::Write);
}

std::vector<Figure> PropertyListMeasurement::figures(const BestTimes& times) const {
    constexpr double linear = double(manyRecords) / double(recordCount);
    // The list of a million is written into fresh memory, which the system clears first, and lies
    // in no cache. That is a factor, where a step that grows with the square would make it ten.
    constexpr double mostOverLinear = 2;
    const auto overPlistlib = [&times](const char* work, const char* theirs, double limit) {
        return comparison("100,000 records as a property list, over plistlib: " + std::string(work),
                          times.of(nameOf(work, recordCount)), times.of(theirs), limit);
    };
    const auto overLinear = [&times](const char* work) {
        return comparison("the same of 1,000,000, over ten times as long: " + std::string(work),
                          times.of(nameOf(work, manyRecords)),
                          times.of(nameOf(work, recordCount)) * linear, mostOverLinear);
    };
    return {overPlistlib("read", "plistlib read", 1.0 / 12), overLinear("read"),
            overPlistlib("write", "plistlib write", 1.0 / 15), overLinear("write")};
}

} // namespace plenzo
