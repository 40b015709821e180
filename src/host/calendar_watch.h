#pragma once

#include "host/calendar_zone.h"
#include "host/host_loop.h"
#include "host/one_shot_timer.h"
#include "host/path_watch.h"

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// Says when the agent's events may be others than before: something has changed in the calendars
/// and settled, or a new day has begun.
class CalendarWatch {
public:
    /// What is to be watched: asked for at first and after each change.
    using Paths = std::function<std::vector<std::string>()>;

    struct Listener {
        std::function<void()> calendarsChanged;
        /// Or the clock was set.
        std::function<void()> dayChanged;
    };

    /// Serves on the loop, which it outlives.
    CalendarWatch(HostLoop& loop, Paths paths, CalendarZone zone, Listener listener);

private:
    void noteChange();
    void settled();
    void newDay();
    void waitForMidnight();

    Paths m_paths;
    CalendarZone m_zone;
    Listener m_listener;
    PathWatch m_files;
    OneShotTimer m_settling;
    OneShotTimer m_midnight;
    int m_waits = 0;
};

} // namespace plenzo
