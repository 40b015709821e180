#include "core/shown_alarms.h"

#include "core/cancellation.h"
#include "model/alarm_order.h"

namespace plenzo {

bool alarmIsCanceledByEventDict(const Alarm& alarm, const Dictionary& eventDict) {
    if (alarm.eventDict == nullptr ||
        alarm.eventDict->stringForKey(keys::uid) != eventDict.stringForKey(keys::uid)) {
        return false;
    }
    const auto reminderUID =
        alarm.reminderDict ? alarm.reminderDict->stringForKey(keys::uid) : std::nullopt;
    return reminderIsCanceled(eventDict, reminderUID, fireInstant(alarm));
}

template <typename Predicate>
void ShownAlarms::removeRowsIf(Predicate isToGo) {
    if (m_alarmWindow == nullptr) {
        return;
    }
    for (const DisplayedAlarm& displayed : m_alarmWindow->displayedAlarms()) {
        if (isToGo(displayed.alarm)) {
            m_alarmWindow->removeDisplayAlarm(displayed.row);
        }
    }
}

void ShownAlarms::removeAlarmsForUIDPlusDay(std::string_view eventUID) {
    removeRowsIf([eventUID](const Alarm& alarm) {
        return alarm.eventDict && alarm.eventDict->stringForKey(keys::uid) == eventUID;
    });
}

void ShownAlarms::removeAlarmsForDeletedOrAckdRemindersInEventDict(const Dictionary& eventDict) {
    removeRowsIf(
        [&eventDict](const Alarm& alarm) { return alarmIsCanceledByEventDict(alarm, eventDict); });
}

} // namespace plenzo
