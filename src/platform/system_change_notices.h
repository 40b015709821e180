#pragma once

#include "dates/time_zone.h"
#include "platform/handle.h"

namespace plenzo {

/// Told when the settings that times and texts depend on have changed under the running agent.
class SystemChangeObserver {
public:
    SystemChangeObserver() = default;
    SystemChangeObserver(const SystemChangeObserver&) = delete;
    SystemChangeObserver& operator=(const SystemChangeObserver&) = delete;
    virtual ~SystemChangeObserver() = default;

    /// The regional settings already have the new zone, which may be the previous one again.
    virtual void systemTimeZoneChanged(const TimeZone& previous) = 0;
    /// The clock was set, forward or back.
    virtual void systemTimeChanged() = 0;
    /// The regional settings already have the new locale.
    virtual void timeFormatChanged() = 0;
};

/// Changes of the system's time zone, clock and locale.
class SystemChangeNotices {
public:
    SystemChangeNotices() = default;
    SystemChangeNotices(const SystemChangeNotices&) = delete;
    SystemChangeNotices& operator=(const SystemChangeNotices&) = delete;
    virtual ~SystemChangeNotices() = default;

    /// Tells the observer, from the main loop, as long as the handle lives. One observer at a time.
    [[nodiscard]] virtual Handle observe(SystemChangeObserver& observer) = 0;
};

} // namespace plenzo
