#include "core/day_rollover.h"

namespace plenzo {

namespace {

constexpr double secondsAfterMidnight = 2.0;
constexpr double secondsPerDay = 86400.0;

} // namespace

Instant DayRollover::midnightTonight() const {
    const TimeZone zone = m_collaborators.regionalSettings.timeZone();
    const Instant now = m_collaborators.clock.now();
    const DateFields today = CalendarDate(now, zone).fields();
    const auto midnight =
        CalendarDate::dateWithYear(today.year, today.month, today.day + 1, 0, 0, 0, false, zone);
    return midnight ? midnight->instant() : Instant::distantFuture();
}

void DayRollover::setMidnightTimer() {
    m_midnightTimerDate = midnightTonight() + secondsAfterMidnight;
    m_midnightTimer =
        m_collaborators.timers.schedule(m_midnightTimerDate, [this] { midnightRefresh(); });
}

void DayRollover::midnightRefresh() {
    m_collaborators.intake.reprocessAllEvents();
    m_collaborators.notifications.cleanDeliveredNotifications();
    if (m_collaborators.statusWindow != nullptr) {
        m_collaborators.statusWindow->processWeatherDict(m_collaborators.weatherDict);
    }
    if (m_collaborators.alarmWindow != nullptr) {
        m_collaborators.alarmWindow->midnightRefresh();
    }
    setMidnightTimer();
}

void DayRollover::awakeFromSleep() {
    m_collaborators.firing.fireAlarm();
    if (m_midnightTimerDate <= m_collaborators.clock.now()) {
        midnightRefresh();
    } else {
        setMidnightTimer();
    }
}

void DayRollover::systemTimeZoneChanged(const TimeZone& previous) {
    if (!(previous == m_collaborators.regionalSettings.timeZone())) {
        midnightRefresh();
    }
}

void DayRollover::systemTimeChanged() {
    const double secondsLeft = m_midnightTimerDate - m_collaborators.clock.now();
    if (secondsLeft <= 0 || secondsLeft >= secondsPerDay) {
        midnightRefresh();
    }
}

void DayRollover::timeFormatChanged() {
    if (m_collaborators.statusWindow != nullptr) {
        m_collaborators.statusWindow->updateShownEventsWithEventDicts(
            m_collaborators.intake.allEventDicts().eventDicts(), false);
    }
}

} // namespace plenzo
