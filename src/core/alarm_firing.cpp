#include "core/alarm_firing.h"

#include "core/preference_keys.h"
#include "model/alarm_order.h"

#include <string_view>
#include <unordered_set>

namespace plenzo {

namespace {

/// The reminder's "uid" when it names an absolute moment, which several occurrences of a repeating
/// event then share.
std::optional<std::string_view> sharedReminderUID(const Alarm& alarm) {
    return alarm.reminderDict && alarm.reminderDict->contains(keys::abs)
               ? alarm.reminderDict->stringForKey(keys::uid)
               : std::nullopt;
}

} // namespace

void AlarmFiring::setAlarmTimer() {
    if (m_firing) {
        return;
    }
    m_alarmTimer.reset();
    const AlarmQueue& queue = m_collaborators.queue;
    if (!queue.empty()) {
        m_alarmTimer = m_collaborators.timers.schedule(queue.fireDate(0), [this] { fireAlarm(); });
    }
}

void AlarmFiring::fireAlarm() {
    m_alarmTimer.reset();
    m_firing = true;
    const auto dueAlarms = m_collaborators.queue.takeDueAlarms(m_collaborators.clock.now());
    if (m_collaborators.defaults.boolForKey(preferences::issueAlarms)) {
        issue(dueAlarms);
    }
    m_firing = false;
    setAlarmTimer();
}

void AlarmFiring::issue(const std::vector<Alarm>& dueAlarms) {
    std::unordered_set<std::string_view> seenReminders;
    for (const Alarm& alarm : dueAlarms) {
        const auto shared = sharedReminderUID(alarm);
        if (!shared || seenReminders.insert(*shared).second) {
            present(alarm);
        }
    }
}

void AlarmFiring::present(const Alarm& alarm) {
    switch (alarm.reminderType()) {
    case ReminderType::Display:
    case ReminderType::Sound:
    case ReminderType::Proximity:
        m_collaborators.notifications.addUserNotificationForAlarm(alarm);
        break;
    default:
        break;
    }
}

} // namespace plenzo
