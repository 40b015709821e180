#include "core/inspector.h"

namespace plenzo {

namespace {

void copyValue(const Dictionary& from, const Key& key, Dictionary& row, const Key& rowKey) {
    if (const Value* value = from.find(key)) {
        row.set(rowKey, *value);
    }
}

Dictionary row(const Alarm& alarm) {
    Dictionary row;
    row.reserve(7);
    if (alarm.fireDate) {
        row.set(keys::fireDate, Value(alarm.fireDate->instant().date()));
    }
    row.set(keys::fireDay, Value(alarm.fireDay));
    copyValue(*alarm.eventDict, keys::uid, row, keys::uid);
    copyValue(*alarm.eventDict, keys::title, row, keys::title);
    copyValue(*alarm.eventDict, keys::type, row, keys::type);
    if (alarm.reminderDict) {
        copyValue(*alarm.reminderDict, keys::uid, row, keys::reminderUid);
        copyValue(*alarm.reminderDict, keys::type, row, keys::reminderType);
    }
    return row;
}

Dictionary row(const DeliveredNotification& notification) {
    const Dictionary& information = notification.userInformation;
    Dictionary row;
    row.reserve(6);
    row.set("deliveryDate", Value(notification.actualDeliveryDate.date()));
    row.set(keys::title, Value(notification.title));
    copyValue(information, keys::eventUidPlusDay, row, keys::uid);
    copyValue(information, keys::notificationReminderUid, row, keys::reminderUid);
    copyValue(information, keys::eventTime, row, "eventTime");
    row.set("shown", Value(notification.hasBeenShown));
    return row;
}

} // namespace

Array Inspector::pendingAlarms() const {
    Array rows;
    rows.reserve(m_queue.size());
    for (std::size_t index = 0; index < m_queue.size(); ++index) {
        rows.append(Value(row(m_queue[index])));
    }
    return rows;
}

Array Inspector::displayedAlarms() const {
    Array rows;
    if (m_alarmWindow != nullptr) {
        for (const DisplayedAlarm& displayed : m_alarmWindow->displayedAlarms()) {
            rows.append(Value(row(displayed.alarm)));
        }
    }
    return rows;
}

Array Inspector::deliveredNotifications() const {
    Array rows;
    for (const auto& [identifier, notification] : m_center.deliveredNotifications()) {
        rows.append(Value(row(notification)));
    }
    return rows;
}

} // namespace plenzo
