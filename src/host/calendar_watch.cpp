#include "host/calendar_watch.h"

#include "host/occurrence_expansion.h"

#include <chrono>
#include <ctime>
#include <utility>

namespace plenzo {

namespace {

/// After each change, so that what comes together is read together.
constexpr int settlingMilliseconds = 100;

/// A stream of changes does not put off the reading for ever.
constexpr int mostWaits = 20;

SystemSeconds systemTime() {
    return std::chrono::time_point_cast<cctz::seconds>(std::chrono::system_clock::now());
}

} // namespace

CalendarWatch::CalendarWatch(HostLoop& loop, Paths paths, CalendarZone zone, Listener listener)
    : m_paths(std::move(paths)), m_zone(std::move(zone)), m_listener(std::move(listener)),
      m_settling(CLOCK_MONOTONIC), m_midnight(CLOCK_REALTIME) {
    m_files.watch(m_paths());
    waitForMidnight();
    loop.watch(m_files.descriptor(), [this] {
        if (m_files.readChanges()) {
            noteChange();
        }
    });
    loop.watch(m_settling.descriptor(), [this] { settled(); });
    loop.watch(m_midnight.descriptor(), [this] { newDay(); });
}

void CalendarWatch::noteChange() {
    if (m_waits < mostWaits) {
        ++m_waits;
        m_settling.expireIn(settlingMilliseconds);
    }
}

void CalendarWatch::settled() {
    m_settling.acknowledge();
    m_waits = 0;
    m_listener.calendarsChanged();
    // The folders that have come, and those that the configuration names now.
    m_files.watch(m_paths());
}

void CalendarWatch::newDay() {
    m_midnight.acknowledge();
    waitForMidnight();
    m_listener.dayChanged();
}

void CalendarWatch::waitForMidnight() {
    m_midnight.expireAt(expansionWindow(systemTime(), 1, m_zone).to);
}

} // namespace plenzo
