#include "core/notification_delivery.h"

#include "core/cancellation.h"
#include "core/preference_keys.h"
#include "model/percent_escapes.h"
#include "propertylist/known_keys.h"

#include <vector>

namespace plenzo {

namespace {

constexpr double longestStaySeconds = 7200;
constexpr std::size_t fewNotifications = 64;
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
    const auto eventUID = alarm.eventDict->stringForKey(keys::uid);
    if (eventUID) {
        removeNotificationsForUIDPlusDay(*eventUID);
    }
    const std::uint64_t identifier = m_collaborators.center.deliver(
        {.title = std::string(alarm.eventText(keys::title)),
         .subtitle = std::string(location.empty() ? alarm.eventText(keys::notes) : location),
         .informativeText = date.text,
         .soundName = soundName(alarm),
         .actionButtonTitle = m_collaborators.strings.string("Snooze"),
         .userInformation = userInformation(alarm, date.eventStartDate)});
    if (eventUID) {
        note(*eventUID, identifier);
    }
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
    if (const DeliveredNotification* notification = notificationOf(eventUID)) {
        m_collaborators.center.removeDelivered(notification->identifier);
    }
}

void NotificationDelivery::removeNotificationsForDeletedOrAckdRemindersInEventDict(
    const Dictionary& eventDict) {
    const auto eventUID = eventDict.stringForKey(keys::uid);
    const DeliveredNotification* notification = eventUID ? notificationOf(*eventUID) : nullptr;
    if (notification != nullptr && notificationIsCanceledByEventDict(*notification, eventDict)) {
        m_collaborators.center.removeDelivered(notification->identifier);
    }
}

void NotificationDelivery::cleanDeliveredNotifications() {
    const Instant oldest = m_collaborators.clock.now() - longestStaySeconds;
    std::vector<std::uint64_t> identifiers;
    for (const auto& [identifier, notification] : m_collaborators.center.deliveredNotifications()) {
        if (notification.hasBeenShown && notification.actualDeliveryDate < oldest) {
            identifiers.push_back(identifier);
        }
    }
    for (const std::uint64_t identifier : identifiers) {
        m_collaborators.center.removeDelivered(identifier);
    }
}

void NotificationDelivery::purgeAllUserNotifications() {
    m_collaborators.center.removeAllDelivered();
    m_latest.clear();
}

const DeliveredNotification* NotificationDelivery::notificationOf(std::string_view eventUID) const {
    const auto latest = m_latest.find(eventUID);
    if (latest == m_latest.end()) {
        return nullptr;
    }
    const DeliveredNotifications& there = m_collaborators.center.deliveredNotifications();
    const auto notification = there.find(latest->second);
    return notification != there.end() ? &notification->second : nullptr;
}

/// What is gone is forgotten now and then, when it is the most of what is noted.
void NotificationDelivery::note(std::string_view eventUID, std::uint64_t identifier) {
    const DeliveredNotifications& there = m_collaborators.center.deliveredNotifications();
    if (m_latest.size() > 2 * there.size() + fewNotifications) {
        std::erase_if(m_latest,
                      [&there](const auto& latest) { return !there.contains(latest.second); });
    }
    m_latest.insert_or_assign(std::string(eventUID), identifier);
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
