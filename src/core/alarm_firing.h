#pragma once

#include "core/alarm_actions.h"
#include "core/alarm_queue.h"
#include "core/alarm_sound.h"
#include "core/alarm_window_controller.h"
#include "core/fired_alarms.h"
#include "core/notification_delivery.h"
#include "core/status_window_controller.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"

#include <functional>
#include <utility>
#include <vector>

namespace plenzo {

/// Issues alarms. Owns the one timer that stands at the earliest pending alarm; when it fires,
/// every alarm that is due leaves the queue and reaches the user.
class AlarmFiring {
public:
    struct Collaborators {
        AlarmQueue& queue;
        FiredAlarms& firedAlarms;
        NotificationDelivery& notifications;
        AlarmActions& actions;
        AlarmSound& sound;
        /// Null when there is none: what would be its rows are notifications then.
        AlarmWindowController* alarmWindow;
        StatusWindowController* statusWindow;
        const UserDefaults& defaults;
        const Clock& clock;
        Timers& timers;
    };

    /// `queueChanged` is called when alarms have left the queue.
    AlarmFiring(Collaborators collaborators, std::function<void()> queueChanged)
        : m_collaborators(collaborators), m_queueChanged(std::move(queueChanged)) {}

    /// Arms the timer anew for the first alarm of the queue, or disarms it when there is none. Does
    /// nothing while alarms are being issued.
    void setAlarmTimer();
    /// Issues every alarm that is due. With alarms switched off in the settings they leave the
    /// queue unseen.
    void fireAlarm();
    /// The same, when there is any.
    void fireAlarmIfDue();

private:
    [[nodiscard]] std::vector<Alarm> takeDueAlarms();
    void issue(const std::vector<Alarm>& dueAlarms);
    [[nodiscard]] bool showsInWindow() const;
    void present(const Alarm& alarm);

    Collaborators m_collaborators;
    std::function<void()> m_queueChanged;
    Handle m_alarmTimer;
    bool m_firing = false;
};

} // namespace plenzo
