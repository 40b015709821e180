#pragma once

#include "core/alarm_date_text.h"
#include "model/alarm.h"
#include "model/host_commands.h"
#include "platform/clock.h"
#include "platform/localized_strings.h"
#include "platform/user_defaults.h"
#include "platform/user_notification_center.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace plenzo {

/// Shows alarms as notifications of the desktop, at most one for each occurrence, hands the user's
/// answers to the host, and removes what the host's records cancel. What a notification is about is
/// known from its user information alone: "event uid+day", "reminder uid", and under "event time"
/// the occurrence's start in seconds since the reference date, 0 without one.
class NotificationDelivery final : public UserNotificationObserver {
public:
    struct Collaborators {
        UserNotificationCenter& center;
        const AlarmDateText& dateText;
        const LocalizedStrings& strings;
        const UserDefaults& defaults;
        const Clock& clock;
        HostCommands& hostCommands;
    };

    /// Answers are heard from now on.
    explicit NotificationDelivery(Collaborators collaborators);

    /// Title, location (or else the notes) and date of the alarm's occurrence, in place of an
    /// earlier notification of it.
    void addUserNotificationForAlarm(const Alarm& alarm);
    /// Tells the host what the user did, and removes the notification: the button snoozes as the
    /// settings say, a click shows and acknowledges, and closing acknowledges.
    void processAlarmUserNotification(const DeliveredNotification& notification,
                                      ActivationType activationType);
    void didActivateNotification(const DeliveredNotification& notification,
                                 ActivationType activationType) override;

    void removeNotificationsForUIDPlusDay(std::string_view eventUID);
    void removeNotificationsForDeletedOrAckdRemindersInEventDict(const Dictionary& eventDict);
    /// Removes what has been there for more than two hours. What nobody has seen yet stays.
    void cleanDeliveredNotifications();
    /// Removes every notification of ours that is still there.
    void purgeAllUserNotifications();

    /// For the end of the program: answers are heard no more.
    void ignoreActivations() { m_observation.reset(); }

private:
    [[nodiscard]] std::optional<std::string> soundName(const Alarm& alarm) const;
    [[nodiscard]] double snoozedUntilSeconds(const Dictionary& userInformation) const;
    /// Null when the occurrence has none that is still there.
    [[nodiscard]] const DeliveredNotification* notificationOf(std::string_view eventUID) const;
    void note(std::string_view eventUID, std::uint64_t identifier);

    Collaborators m_collaborators;
    /// The latest notification of each occurrence, by "uid". Some are gone by now.
    std::map<std::string, std::uint64_t, std::less<>> m_latest;
    Handle m_observation;
};

/// Whether the record is one of the notification's occurrence and has no more use for it: its
/// reminder is gone, or was acknowledged after the delivery.
[[nodiscard]] bool notificationIsCanceledByEventDict(const DeliveredNotification& notification,
                                                     const Dictionary& eventDict);

} // namespace plenzo
