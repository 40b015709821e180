#include "bookmarks_measurement.h"

#include "core/test_agent.h"
#include "support/bookmark_utilities.h"
#include "support/fake_file_references.h"

#include <cstddef>
#include <string>

namespace plenzo {

namespace {

constexpr std::size_t fewFiles = 2000;
constexpr std::size_t manyFiles = 20000;
constexpr int openReminder = 4;

std::string nameOf(std::size_t count) {
    return "keeping of " + std::to_string(count) + " files";
}

/// An agent over fakes, but with bookmarks.
struct BookmarkingDesktop : TestDesktop {
    explicit BookmarkingDesktop(FileReferences& references)
        : bookmarks({.defaults = defaults,
                     .references = references,
                     .strings = strings,
                     .openPanel = nullptr,
                     .programName = {}}) {
        Platform all = platform();
        all.fileAccess = &bookmarks;
        agent = std::make_unique<PlenzoAlarm>(all, testIdentity());
    }

    [[nodiscard]] std::size_t keptCount() const {
        const Value kept = defaults.valueForKey("secureBookmarks");
        return kept.dictionary() != nullptr ? kept.dictionary()->size() : 0;
    }

    BookmarkUtilities bookmarks;
    std::unique_ptr<PlenzoAlarm> agent;
};

} // namespace

struct BookmarksMeasurement::Batch {
    explicit Batch(std::size_t count) {
        for (std::size_t number = 0; number < count; ++number) {
            const std::string path = "/home/ana/plans/" + std::to_string(number);
            references.put(path);
            Dictionary reminder = relativeReminder("r", 0, openReminder);
            reminder.set(keys::book, Value::fromData(*references.referenceToFile(path)));
            records.append(event(path, utc(2026, 3, 20, 12), {reminder}));
        }
    }

    FakeFileReferences references;
    Array records;
};

BookmarksMeasurement::BookmarksMeasurement() {
    for (const std::size_t count : {fewFiles, manyFiles}) {
        m_batches[count] = std::make_shared<Batch>(count);
    }
}

void BookmarksMeasurement::registerBenchmarks() {
    for (const auto& [count, batch] : m_batches) {
        add(nameOf(count), [count = count, batch = batch](benchmark::State& state) {
            for ([[maybe_unused]] auto iteration : state) {
                state.PauseTiming();
                auto desktop = std::make_unique<BookmarkingDesktop>(batch->references);
                state.ResumeTiming();
                desktop->agent->alarmsUpdated(batch->records, false);
                desktop->timers.fireDue();
                state.PauseTiming();
                if (desktop->keptCount() != count) {
                    state.SkipWithError("not every file is kept");
                }
                desktop.reset();
                state.ResumeTiming();
            }
        });
    }
}

std::vector<Figure> BookmarksMeasurement::figures(const BestTimes& times) const {
    const double few = times.of(nameOf(fewFiles));
    const double many = times.of(nameOf(manyFiles));
    constexpr double linear = double(manyFiles) / double(fewFiles);
    // The rest is what the caches cost, and the map of the played files.
    return {
        comparison("keeping 20,000 files, over ten times that of 2,000", many, linear * few, 2)};
}

} // namespace plenzo
