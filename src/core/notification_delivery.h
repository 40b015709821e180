#pragma once

#include "core/alarm_date_text.h"
#include "model/alarm.h"
#include "platform/user_notification_center.h"

namespace plenzo {

/// Shows alarms as notifications of the desktop.
class NotificationDelivery {
public:
    NotificationDelivery(UserNotificationCenter& center, const AlarmDateText& dateText)
        : m_center(center), m_dateText(dateText) {}

    /// Title, location (or else the notes) and date of the alarm's occurrence.
    void addUserNotificationForAlarm(const Alarm& alarm);
    /// Removes every notification of ours that is still there.
    void purgeAllUserNotifications();

private:
    UserNotificationCenter& m_center;
    const AlarmDateText& m_dateText;
};

} // namespace plenzo
