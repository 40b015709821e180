#include "host/store/calendar_store.h"

#include "host/files/file_paths.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace plenzo {

void CalendarStore::setSources(const std::vector<CalendarSource>& sources) {
    std::vector<StoredSource> stored;
    for (const CalendarSource& source : sources) {
        const auto known =
            std::find_if(m_sources.begin(), m_sources.end(),
                         [&](const StoredSource& one) { return one.source.paths == source.paths; });
        StoredSource next{source, {}, true};
        if (known != m_sources.end()) {
            next = std::move(*known);
            next.source = source;
            m_sources.erase(known);
        } else {
            for (const std::string& path : source.paths) {
                next.paths.emplace_back(path, m_amendments);
            }
        }
        stored.push_back(std::move(next));
    }
    m_sources = std::move(stored);
}

int CalendarStore::bearWithAbsentFiles(SteadyClock clock) {
    m_clock = std::move(clock);
    return m_graceEnd.descriptor();
}

SteadyTime CalendarStore::now() const {
    return m_clock ? m_clock() : SteadyTime();
}

void CalendarStore::update(const PathChanges& changes) {
    const SteadyTime present = now();
    for (StoredSource& source : m_sources) {
        look(source, changes, present);
    }
    followMovedFiles(present);
    takeProblems();
    m_set.problems.insert(m_set.problems.end(), changes.problems.begin(), changes.problems.end());
    assemble();
    waitForGraceEnd(present);
}

void CalendarStore::noteWritten(const std::string& path) {
    const std::set<std::string> spellings = {absolutePath(path), canonicalPath(path)};
    for (StoredSource& source : m_sources) {
        for (StoredPath& stored : source.paths) {
            stored.lookAt(spellings, now());
        }
    }
    assemble();
}

void CalendarStore::look(StoredSource& source, const PathChanges& changes, SteadyTime now) const {
    const bool isNew = std::exchange(source.isNew, false);
    for (StoredPath& path : source.paths) {
        path.grace().setGranted(m_clock != nullptr);
        if (isNew || changes.isAnything) {
            path.lookAtEverything(now);
        } else {
            path.lookAt(changes.paths, now);
        }
    }
}

/// A file that was given another name does not count under the old one beside it.
void CalendarStore::followMovedFiles(SteadyTime now) {
    std::vector<CalendarFilePointer> newFiles;
    std::set<std::string_view> uids;
    for (StoredSource& source : m_sources) {
        for (StoredPath& path : source.paths) {
            for (CalendarFilePointer& file : path.takeNewFiles()) {
                newFiles.push_back(std::move(file));
            }
        }
    }
    if (newFiles.empty() || !earliestGraceEnd()) {
        return;
    }
    for (const CalendarFilePointer& file : newFiles) {
        for (const CalendarItem& item : file->items) {
            uids.insert(item.uid);
        }
    }
    for (StoredSource& source : m_sources) {
        for (StoredPath& path : source.paths) {
            path.grace().endForMoved(uids);
            path.lookAt({}, now);
        }
    }
}

void CalendarStore::takeProblems() {
    m_set.problems.clear();
    for (StoredSource& source : m_sources) {
        for (StoredPath& path : source.paths) {
            auto problems = path.takeProblems();
            std::move(problems.begin(), problems.end(), std::back_inserter(m_set.problems));
        }
    }
}

std::optional<SteadyTime> CalendarStore::earliestGraceEnd() const {
    std::optional<SteadyTime> earliest;
    for (const StoredSource& source : m_sources) {
        for (const StoredPath& path : source.paths) {
            const auto end = path.grace().nextEnd();
            earliest = end ? std::min(earliest.value_or(*end), *end) : earliest;
        }
    }
    return earliest;
}

void CalendarStore::waitForGraceEnd(SteadyTime now) {
    constexpr SteadyTime never{0};
    constexpr SteadyTime soonest{1};
    const auto end = earliestGraceEnd();
    const SteadyTime wait = end ? std::max(*end - now, soonest) : never;
    m_graceEnd.acknowledge();
    m_graceEnd.expireIn(static_cast<int>(wait.count()));
}

void CalendarStore::assemble() {
    std::vector<const StoredPath*> paths;
    for (const StoredSource& source : m_sources) {
        for (const StoredPath& path : source.paths) {
            paths.push_back(&path);
        }
    }
    m_set.calendars.clear();
    CalendarAssembly assembly(paths);
    std::unordered_set<std::string> known;
    for (const StoredSource& source : m_sources) {
        for (Calendar& calendar : assembly.calendarsOf(source.source, source.paths)) {
            if (known.insert(calendar.uid).second) {
                m_set.calendars.push_back(std::move(calendar));
            }
        }
    }
}

} // namespace plenzo
