#include "core/notification_delivery.h"

namespace plenzo {

namespace {

std::string text(const Dictionary& eventDict, const Key& key) {
    return std::string(eventDict.stringForKey(key).value_or(std::string_view()));
}

} // namespace

void NotificationDelivery::addUserNotificationForAlarm(const Alarm& alarm) {
    const Dictionary& eventDict = *alarm.eventDict;
    const std::string location = text(eventDict, keys::location);
    m_center.deliver({.title = text(eventDict, keys::title),
                      .subtitle = location.empty() ? text(eventDict, keys::notes) : location,
                      .informativeText = m_dateText.dateStringForAlarm(alarm).text});
}

void NotificationDelivery::purgeAllUserNotifications() {
    m_center.removeAllDelivered();
}

} // namespace plenzo
