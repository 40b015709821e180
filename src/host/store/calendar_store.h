#pragma once

#include "host/store/calendar_assembly.h"
#include "host/store/calendar_set.h"
#include "host/store/path_watch.h"

#include <string>
#include <vector>

namespace plenzo {

/// The calendars of some sources, kept up with their files: what has not changed is read once.
class CalendarStore {
public:
    CalendarStore() = default;
    /// The amendments outlive it.
    explicit CalendarStore(const CalendarAmendments& amendments) : m_amendments(&amendments) {}

    /// From now on the calendars are of these sources.
    void setSources(const std::vector<CalendarSource>& sources);

    /// Reads what may have changed. A calendar that several sources name counts once.
    void update(const PathChanges& changes);

    /// Reads a file that has just been written or removed by this program, so that the calendars
    /// hold what it holds now, without waiting for word of it. The next update has its problems.
    void noteWritten(const std::string& path);

    /// With the problems of what the last update read. Stays where it is.
    const CalendarSet& calendars() const { return m_set; }

private:
    struct StoredSource {
        CalendarSource source;
        std::vector<StoredPath> paths;
        bool isNew = true;
    };

    static void look(StoredSource& source, const PathChanges& changes);
    void assemble();

    const CalendarAmendments* m_amendments = nullptr;
    std::vector<StoredSource> m_sources;
    CalendarSet m_set;
};

} // namespace plenzo
