#pragma once

#include "core/alarm_firing.h"
#include "core/alarm_window_controller.h"
#include "core/event_intake.h"
#include "core/notification_delivery.h"
#include "core/status_window_controller.h"
#include "platform/clock.h"
#include "platform/regional_settings.h"
#include "platform/system_change_notices.h"
#include "platform/timers.h"

#include <functional>

namespace plenzo {

/// Keeps what the user sees and what is to fire current: at midnight, after a sleep, and when the
/// zone, the clock or the locale has changed. Owns the midnight timer.
class DayRollover final : public SystemChangeObserver {
public:
    struct Collaborators {
        EventIntake& intake;
        AlarmFiring& firing;
        NotificationDelivery& notifications;
        /// Null when there is none.
        AlarmWindowController* alarmWindow;
        StatusWindowController* statusWindow;
        const Dictionary& weatherDict;
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        Timers& timers;
    };

    explicit DayRollover(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// The beginning of the day after today in the system's zone.
    [[nodiscard]] Instant midnightTonight() const;
    /// Arms the timer two seconds after midnightTonight().
    void setMidnightTimer();
    /// Computes everything anew as of now, and arms the timer anew.
    void midnightRefresh();

    /// What fell due meanwhile fires at once; a midnight that went by is made up for.
    void awakeFromSleep();

    void systemTimeZoneChanged(const TimeZone& previous) override;
    void systemTimeChanged() override;
    void timeFormatChanged() override;

private:
    Collaborators m_collaborators;
    Handle m_midnightTimer;
    Instant m_midnightTimerDate = Instant::distantFuture();
};

} // namespace plenzo
