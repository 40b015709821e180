#include "core/notification_delivery.h"

#include "core/cancellation.h"
#include "core/preference_keys.h"
#include "model/percent_escapes.h"
#include "propertylist/known_keys.h"

#include <vector>

namespace plenzo {

namespace {

constexpr double longestStaySeconds = 7200;
constexpr const char* usualSoundName = "Basso";
constexpr const char* soundOfDesktop = "";

/// What identifies the notification, up to the first that the alarm does not have.
Dictionary userInformation(const Alarm& alarm, const std::optional<CalendarDate>& eventStartDate) {
    Dictionary information;
    const auto eventUID = alarm.eventDict->stringForKey(keys::uid);
    if (!eventUID) {
        return information;
    }
    information.set(keys::eventUidPlusDay, Value(*eventUID));
    const auto reminderUID =
        alarm.reminderDict ? alarm.reminderDict->stringForKey(keys::uid) : std::nullopt;
    if (!reminderUID) {
        return information;
    }
    information.set(keys::notificationReminderUid, Value(*reminderUID));
    const Instant start = eventStartDate ? eventStartDate->instant() : Instant();
    information.set(keys::eventTime, Value(start.secondsSinceReferenceDate()));
    return information;
}

/// Empty when there is none.
std::string_view text(const Dictionary& dictionary, const Key& key) {
    return dictionary.stringForKey(key).value_or(std::string_view());
}

} // namespace

NotificationDelivery::NotificationDelivery(Collaborators collaborators)
    : m_collaborators(collaborators), m_observation(m_collaborators.center.observe(*this)) {}

void NotificationDelivery::addUserNotificationForAlarm(const Alarm& alarm) {
    if (!alarm.eventDict) {
        return;
    }
    const auto date =
        m_collaborators.dateText.dateStringForAlarm(alarm, AlarmDateText::SeenFrom::FireDate);
    const std::string_view location = alarm.eventText(keys::location);
    if (const auto eventUID = alarm.eventDict->stringForKey(keys::uid)) {
        removeNotificationsForUIDPlusDay(*eventUID);
    }
    m_collaborators.center.deliver(
        {.title = std::string(alarm.eventText(keys::title)),
         .subtitle = std::string(location.empty() ? alarm.eventText(keys::notes) : location),
         .informativeText = date.text,
         .soundName = soundName(alarm),
         .actionButtonTitle = m_collaborators.strings.string("Snooze"),
         .userInformation = userInformation(alarm, date.eventStartDate)});
}

std::optional<std::string> NotificationDelivery::soundName(const Alarm& alarm) const {
    if (alarm.reminderType() != ReminderType::Sound) {
        return std::nullopt;
    }
    const auto url = alarm.reminderDict->stringForKey(keys::url);
    const auto name = url ? replacingPercentEscapes(*url) : std::nullopt;
    const std::string wanted = name.value_or(usualSoundName);
    return m_collaborators.center.hasSoundNamed(wanted) ? wanted : soundOfDesktop;
}

void NotificationDelivery::didActivateNotification(const DeliveredNotification& notification,
                                                   ActivationType activationType) {
    processAlarmUserNotification(notification, activationType);
}

void NotificationDelivery::processAlarmUserNotification(const DeliveredNotification& notification,
                                                        ActivationType activationType) {
    const std::uint64_t identifier = notification.identifier;
    const Dictionary information = notification.userInformation;
    const std::string_view reminderUID = text(information, keys::notificationReminderUid);
    HostCommands& host = m_collaborators.hostCommands;
    switch (activationType) {
    case ActivationType::ActionButtonClicked:
        host.snoozeReminderWithUID(reminderUID, snoozedUntilSeconds(information));
        break;
    case ActivationType::ContentsClicked:
        host.showEventWithUIDPlusDay(text(information, keys::eventUidPlusDay),
                                     HostCommands::InfoPanel::Show);
        host.acknowledgeReminderWithUID(reminderUID);
        break;
    case ActivationType::None:
        host.acknowledgeReminderWithUID(reminderUID);
        break;
    case ActivationType::Other:
        break;
    }
    m_collaborators.center.removeDelivered(identifier);
}

/// A snooze below 0 is meant from the start of the occurrence.
double NotificationDelivery::snoozedUntilSeconds(const Dictionary& userInformation) const {
    const auto snoozeSeconds =
        static_cast<double>(m_collaborators.defaults.integerForKey(preferences::snoozeSeconds));
    const double fromSeconds = snoozeSeconds < 0
                                   ? userInformation.doubleForKey(keys::eventTime)
                                   : m_collaborators.clock.now().secondsSinceReferenceDate();
    return fromSeconds + snoozeSeconds;
}

void NotificationDelivery::removeNotificationsForUIDPlusDay(std::string_view eventUID) {
    removeIf([eventUID](const DeliveredNotification& notification) {
        return notification.userInformation.stringForKey(keys::eventUidPlusDay) == eventUID;
    });
}

void NotificationDelivery::removeNotificationsForDeletedOrAckdRemindersInEventDict(
    const Dictionary& eventDict) {
    removeIf([&eventDict](const DeliveredNotification& notification) {
        return notificationIsCanceledByEventDict(notification, eventDict);
    });
}

void NotificationDelivery::cleanDeliveredNotifications() {
    const Instant oldest = m_collaborators.clock.now() - longestStaySeconds;
    removeIf([oldest](const DeliveredNotification& notification) {
        return notification.hasBeenShown && notification.actualDeliveryDate < oldest;
    });
}

void NotificationDelivery::purgeAllUserNotifications() {
    m_collaborators.center.removeAllDelivered();
}

void NotificationDelivery::removeIf(
    const std::function<bool(const DeliveredNotification&)>& isToGo) {
    std::vector<std::uint64_t> identifiers;
    for (const auto& notification : m_collaborators.center.deliveredNotifications()) {
        if (isToGo(notification)) {
            identifiers.push_back(notification.identifier);
        }
    }
    for (const std::uint64_t identifier : identifiers) {
        m_collaborators.center.removeDelivered(identifier);
    }
}

bool notificationIsCanceledByEventDict(const DeliveredNotification& notification,
                                       const Dictionary& eventDict) {
    const Dictionary& information = notification.userInformation;
    const auto eventUID = information.stringForKey(keys::eventUidPlusDay);
    return eventUID && eventUID == eventDict.stringForKey(keys::uid) &&
           reminderIsCanceled(eventDict, information.stringForKey(keys::notificationReminderUid),
                              notification.actualDeliveryDate);
}

} // namespace plenzo
