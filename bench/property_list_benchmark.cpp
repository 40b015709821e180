// Reading, writing, comparing and dropping binary property lists of 1,000 to 1,000,000 records. The
// last lines of each say how the time grows with the records.

#include "propertylist/binary_property_list.h"
#include "propertylist/known_keys.h"
#include "support/sample_records.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

namespace plenzo {
namespace {

std::vector<std::byte> fileOf(std::size_t recordCount) {
    return writeBinaryPropertyList(sampleRecords(recordCount));
}

std::size_t recordCountOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void reportRecords(benchmark::State& state) {
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readRecords(benchmark::State& state) {
    const auto file = fileOf(recordCountOf(state));
    for (auto _ : state) {
        auto value = readBinaryPropertyList(file);
        benchmark::DoNotOptimize(value);
        state.PauseTiming();
        value.reset();
        state.ResumeTiming();
    }
    reportRecords(state);
}

void writeRecords(benchmark::State& state) {
    const Value records = sampleRecords(recordCountOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(writeBinaryPropertyList(records));
    reportRecords(state);
}

void compareRecords(benchmark::State& state) {
    const Array left = sampleRecords(recordCountOf(state));
    const Array right = sampleRecords(recordCountOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(left == right);
    reportRecords(state);
}

void readByKey(benchmark::State& state) {
    const Dictionary record = sampleRecord(7);
    for (auto _ : state) {
        benchmark::DoNotOptimize(record.stringForKey(keys::uid));
        benchmark::DoNotOptimize(record.dateForKey(keys::date));
        benchmark::DoNotOptimize(record.arrayForKey(keys::rem));
        benchmark::DoNotOptimize(record.boolForKey(keys::completed)); // absent
    }
    state.SetItemsProcessed(state.iterations() * 4);
}

constexpr auto unit = benchmark::kMillisecond;

BENCHMARK(readRecords)->RangeMultiplier(10)->Range(1'000, 1'000'000)->Unit(unit)->Complexity();
BENCHMARK(writeRecords)->RangeMultiplier(10)->Range(1'000, 1'000'000)->Unit(unit)->Complexity();
BENCHMARK(compareRecords)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(unit)->Complexity();
BENCHMARK(readByKey);

} // namespace
} // namespace plenzo

BENCHMARK_MAIN();
