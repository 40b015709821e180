#include "host/store/calendar_watch.h"

#include "host/occurrences/occurrence_expansion.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>

namespace plenzo {

namespace {

/// A change that comes alone is told soon. As long as more come, each wait is longer than the one
/// before, so that a flood is read in few portions.
constexpr int firstWaitMilliseconds = 8;
constexpr int longestWaitMilliseconds = 256;

/// A stream of changes does not put off the reading for ever.
constexpr int mostWaitedMilliseconds = 2000;

constexpr int lookingMilliseconds = 60'000;

SystemSeconds systemTime() {
    return std::chrono::time_point_cast<cctz::seconds>(std::chrono::system_clock::now());
}

} // namespace

CalendarWatch::CalendarWatch(HostLoop& loop, Paths paths, CalendarZone zone, Listener listener)
    : m_paths(std::move(paths)), m_zone(std::move(zone)), m_listener(std::move(listener)),
      m_settling(CLOCK_MONOTONIC), m_midnight(CLOCK_REALTIME), m_looking(CLOCK_MONOTONIC) {
    watchPaths();
    waitForMidnight();
    loop.watch(m_files.descriptor(), [this] {
        if (PathChanges changes = m_files.readChanges()) {
            noteChanges(std::move(changes));
        }
    });
    loop.watch(m_settling.descriptor(), [this] { settled(); });
    loop.watch(m_midnight.descriptor(), [this] { newDay(); });
    loop.watch(m_looking.descriptor(), [this] {
        m_looking.acknowledge();
        noteChanges({true, {}});
    });
}

void CalendarWatch::noteChanges(PathChanges changes) {
    m_changes.add(std::move(changes));
    m_moreCame = m_waitMilliseconds > 0;
    if (!m_moreCame) {
        wait(firstWaitMilliseconds);
    }
}

void CalendarWatch::wait(int milliseconds) {
    m_moreCame = false;
    m_waitMilliseconds = milliseconds;
    m_waitedMilliseconds += milliseconds;
    m_settling.expireIn(milliseconds);
}

void CalendarWatch::settled() {
    m_settling.acknowledge();
    if (m_moreCame && m_waitedMilliseconds < mostWaitedMilliseconds) {
        wait(std::min(2 * m_waitMilliseconds, longestWaitMilliseconds));
        return;
    }
    m_waitMilliseconds = 0;
    m_waitedMilliseconds = 0;
    tellChanges();
}

void CalendarWatch::tellChanges() {
    const PathChanges changes = std::exchange(m_changes, {});
    if (changes.isAnything) {
        watchPaths(); // the folders that have come, before they are read
    }
    m_listener.calendarsChanged(changes);
    if (m_paths() != m_watchedPaths) { // the configuration names others now
        watchPaths();
        noteChanges({true, {}});
    }
}

void CalendarWatch::watchPaths() {
    m_watchedPaths = m_paths();
    m_files.watch(m_watchedPaths);
    noteBlindness();
}

void CalendarWatch::noteBlindness() {
    const std::string& problem = m_files.problem();
    m_looking.expireIn(problem.empty() ? 0 : lookingMilliseconds);
    if (!problem.empty() && problem != m_toldProblem) {
        noteChanges(
            {true, {}, {"changes of calendars are looked for once a minute only: " + problem}});
    }
    m_toldProblem = problem;
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
