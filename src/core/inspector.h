#pragma once

#include "core/alarm_queue.h"
#include "core/alarm_window_controller.h"
#include "platform/user_notification_center.h"
#include "propertylist/dictionary.h"

namespace plenzo {

/// Answers "what will fire, and when?", and what became of it, for whoever looks at the running
/// agent from outside.
class Inspector {
public:
    /// Without an alarm window there are no displayed alarms.
    Inspector(const AlarmQueue& queue, const UserNotificationCenter& center,
              const AlarmWindowController* alarmWindow)
        : m_queue(queue), m_center(center), m_alarmWindow(alarmWindow) {}

    /// A dictionary for each pending alarm, in queue order: "fireDate", "fireDay", "uid" and
    /// "title" and "type" of the event, "reminderUid" and "reminderType". What a record lacks its
    /// row lacks.
    [[nodiscard]] Array pendingAlarms() const;
    /// The same for each row of the alarm window, from its top.
    [[nodiscard]] Array displayedAlarms() const;
    /// A dictionary for each notification that is still there, in the order of their delivery:
    /// "deliveryDate", "title", "uid" of the event, "reminderUid", "eventTime" in seconds since the
    /// reference date, and "shown", false while it waits for somebody to show it.
    [[nodiscard]] Array deliveredNotifications() const;

private:
    const AlarmQueue& m_queue;
    const UserNotificationCenter& m_center;
    const AlarmWindowController* m_alarmWindow;
};

} // namespace plenzo
