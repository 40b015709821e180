#pragma once

#include "host/ical/calendar_zone.h"
#include "host/loop/host_loop.h"
#include "host/loop/one_shot_timer.h"
#include "host/store/path_watch.h"

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// Says when the agent's events may be others than before: something has changed in the calendars
/// and settled, or a new day has begun. Where the system does not say what changes, anything may
/// have once a minute.
class CalendarWatch {
public:
    /// What is to be watched: asked for at first and after changes.
    using Paths = std::function<std::vector<std::string>()>;

    struct Listener {
        std::function<void(const PathChanges&)> calendarsChanged;
        /// Or the clock was set.
        std::function<void()> dayChanged;
    };

    /// Serves on the loop, which it outlives.
    CalendarWatch(HostLoop& loop, Paths paths, CalendarZone zone, Listener listener);

private:
    void noteChanges(PathChanges changes);
    void wait(int milliseconds);
    void settled();
    void tellChanges();
    void watchPaths();
    void noteBlindness();
    void newDay();
    void waitForMidnight();

    Paths m_paths;
    CalendarZone m_zone;
    Listener m_listener;
    PathWatch m_files;
    OneShotTimer m_settling;
    OneShotTimer m_midnight;
    OneShotTimer m_looking; // while not everything can be watched
    std::string m_toldProblem;
    std::vector<std::string> m_watchedPaths;
    PathChanges m_changes; // not told yet
    bool m_moreCame = false;
    int m_waitMilliseconds = 0; // 0 while nothing waits
    int m_waitedMilliseconds = 0;
};

} // namespace plenzo
