#pragma once

#include "core/alarm_queue.h"
#include "platform/user_notification_center.h"
#include "propertylist/dictionary.h"

namespace plenzo {

/// Answers "what will fire, and when?", and what became of it, for whoever looks at the running
/// agent from outside.
class Inspector {
public:
    Inspector(const AlarmQueue& queue, const UserNotificationCenter& center)
        : m_queue(queue), m_center(center) {}

    /// A dictionary for each pending alarm, in queue order: "fireDate", "fireDay", "uid" and
    /// "title" and "type" of the event, "reminderUid" and "reminderType". What a record lacks its
    /// row lacks.
    [[nodiscard]] Array pendingAlarms() const;
    /// A dictionary for each notification that is still there, in the order of their delivery:
    /// "deliveryDate", "title", "uid" of the event, "reminderUid", "eventTime" in seconds since the
    /// reference date, and "shown", false while it waits for somebody to show it.
    [[nodiscard]] Array deliveredNotifications() const;

private:
    const AlarmQueue& m_queue;
    const UserNotificationCenter& m_center;
};

} // namespace plenzo
