#pragma once

#include "core/alarm_queue.h"
#include "core/notification_delivery.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"

#include <vector>

namespace plenzo {

/// Issues alarms. Owns the one timer that stands at the earliest pending alarm; when it fires,
/// every alarm that is due leaves the queue and reaches the user.
class AlarmFiring {
public:
    struct Collaborators {
        AlarmQueue& queue;
        NotificationDelivery& notifications;
        const UserDefaults& defaults;
        const Clock& clock;
        Timers& timers;
    };

    explicit AlarmFiring(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// Arms the timer anew for the first alarm of the queue, or disarms it when there is none. Does
    /// nothing while alarms are being issued.
    void setAlarmTimer();
    /// Issues every alarm that is due. With alarms switched off in the settings they leave the
    /// queue unseen.
    void fireAlarm();

private:
    void issue(const std::vector<Alarm>& dueAlarms);
    void present(const Alarm& alarm);

    Collaborators m_collaborators;
    Handle m_alarmTimer;
    bool m_firing = false;
};

} // namespace plenzo
