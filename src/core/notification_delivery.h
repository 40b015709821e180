#pragma once

#include "model/alarm.h"
#include "platform/regional_settings.h"
#include "platform/user_notification_center.h"

namespace plenzo {

/// Shows alarms as notifications of the desktop.
class NotificationDelivery {
public:
    NotificationDelivery(UserNotificationCenter& center, const RegionalSettings& regionalSettings)
        : m_center(center), m_regionalSettings(regionalSettings) {}

    /// Title, location (or else the notes) and date of the alarm's occurrence.
    void addUserNotificationForAlarm(const Alarm& alarm);
    /// Removes every notification of ours that is still there.
    void purgeAllUserNotifications();

private:
    UserNotificationCenter& m_center;
    const RegionalSettings& m_regionalSettings;
};

} // namespace plenzo
