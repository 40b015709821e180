#pragma once

#include "host/loop/one_shot_timer.h"
#include "host/store/calendar_assembly.h"
#include "host/store/calendar_set.h"
#include "host/store/file_grace.h"
#include "host/store/path_watch.h"

#include <ctime>
#include <optional>
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

    /// Reads what may have changed. A file that several sources name counts for the
    /// first of them.
    void update(const PathChanges& changes);

    /// From now on files that are away or damaged count for a moment as they were (see
    /// `FileGrace`). The descriptor becomes readable when such a moment ends: an update, without
    /// changes when there are none, then looks at them once more.
    int bearWithAbsentFiles(SteadyClock clock = steadyTime);

    /// Reads a file that has just been written by this program, so that the calendars
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

    void look(StoredSource& source, const PathChanges& changes, SteadyTime now) const;
    [[nodiscard]] SteadyTime now() const;
    void followMovedFiles(SteadyTime now);
    void takeProblems();
    void assemble();
    [[nodiscard]] std::optional<SteadyTime> earliestGraceEnd() const;
    void waitForGraceEnd(SteadyTime now);

    const CalendarAmendments* m_amendments = nullptr;
    SteadyClock m_clock; // empty as long as nothing is borne with
    OneShotTimer m_graceEnd{CLOCK_MONOTONIC};
    std::vector<StoredSource> m_sources;
    CalendarSet m_set;
};

} // namespace plenzo
