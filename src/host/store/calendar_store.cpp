#include "host/store/calendar_store.h"

#include "host/files/file_paths.h"

#include <algorithm>
#include <iterator>
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

void CalendarStore::update(const PathChanges& changes) {
    m_set.problems.clear();
    for (StoredSource& source : m_sources) {
        look(source, changes);
        for (StoredPath& path : source.paths) {
            auto problems = path.takeProblems();
            std::move(problems.begin(), problems.end(), std::back_inserter(m_set.problems));
        }
    }
    assemble();
}

void CalendarStore::noteWritten(const std::string& path) {
    const std::set<std::string> spellings = {absolutePath(path), canonicalPath(path)};
    for (StoredSource& source : m_sources) {
        for (StoredPath& stored : source.paths) {
            stored.lookAt(spellings);
        }
    }
    assemble();
}

void CalendarStore::look(StoredSource& source, const PathChanges& changes) {
    const bool isNew = std::exchange(source.isNew, false);
    for (StoredPath& path : source.paths) {
        if (isNew || changes.isAnything) {
            path.lookAtEverything();
        } else {
            path.lookAt(changes.paths);
        }
    }
}

void CalendarStore::assemble() {
    m_set.calendars.clear();
    std::unordered_set<std::string> known;
    for (const StoredSource& source : m_sources) {
        for (Calendar& calendar : assembledCalendars(source.source, source.paths)) {
            if (known.insert(calendar.uid).second) {
                m_set.calendars.push_back(std::move(calendar));
            }
        }
    }
}

} // namespace plenzo
