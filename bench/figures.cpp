// The figures that the program has to keep to, each beside its limit. What is compared runs in
// turns in this one program, so that what disturbs the one disturbs the other. Ends with 1 when a
// figure misses its limit. Takes the arguments of Google Benchmark; what they leave out counts as
// missed.

#include "alarm_window_measurement.h"
#include "bookmarks_measurement.h"
#include "property_list_measurement.h"
#include "queue_measurement.h"
#include "resident_memory.h"
#include "wire_measurement.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace plenzo {
namespace {

bool print(const Figure& figure) {
    const char* verdict = figure.isMet() ? "met" : "MISSED";
    if (std::isnan(figure.value)) {
        std::printf("%-62s %9s  of %7.4g  %-7s\n", figure.what.c_str(), "not run", figure.limit,
                    verdict);
    } else {
        std::printf("%-62s %9.4g  of %7.4g  %-7s %s\n", figure.what.c_str(), figure.value,
                    figure.limit, verdict, figure.note.c_str());
    }
    return figure.isMet();
}

} // namespace
} // namespace plenzo

int main(int argc, char** argv) {
    using namespace plenzo;
    // First, while the heap is still empty.
    std::vector<Figure> figures = residentMemoryOfARecord();

    const std::unique_ptr<Measurement> measurements[] = {
        std::make_unique<QueueMeasurement>(), std::make_unique<PropertyListMeasurement>(),
        std::make_unique<WireMeasurement>(), std::make_unique<BookmarksMeasurement>(),
        std::make_unique<AlarmWindowMeasurement>()};
    for (const auto& measurement : measurements) {
        measurement->registerBenchmarks();
    }
    const BestTimes times = runInTurns(argc, argv, "5");
    for (const auto& measurement : measurements) {
        const auto more = measurement->figures(times);
        figures.insert(figures.end(), more.begin(), more.end());
    }

    bool allMet = true;
    for (const Figure& figure : figures) {
        allMet = print(figure) && allMet;
    }
    return allMet ? EXIT_SUCCESS : EXIT_FAILURE;
}
