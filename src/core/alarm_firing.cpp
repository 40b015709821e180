#include "core/alarm_firing.h"

#include "core/preference_keys.h"
#include "model/alarm_order.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace plenzo {

namespace {

/// No clock is set back by more and still counts as one day's.
constexpr double rememberedSeconds = 2 * 86400.0;

/// The reminder's "uid" when it names an absolute moment, which several occurrences of a repeating
/// event then share.
std::optional<std::string_view> sharedReminderUID(const Alarm& alarm) {
    return alarm.reminderDict && alarm.reminderDict->contains(keys::abs)
               ? alarm.reminderDict->stringForKey(keys::uid)
               : std::nullopt;
}

bool isShown(const Alarm& alarm) {
    switch (alarm.reminderType()) {
    case ReminderType::Display:
    case ReminderType::Sound:
    case ReminderType::Proximity:
        return true;
    default:
        return false;
    }
}

/// Those that are carried out: of a reminder that several occurrences share only the first.
std::vector<const Alarm*> withoutRepetitions(const std::vector<Alarm>& dueAlarms) {
    std::vector<const Alarm*> alarms;
    std::unordered_set<std::string_view> seenReminders;
    for (const Alarm& alarm : dueAlarms) {
        const auto shared = sharedReminderUID(alarm);
        if (!shared || seenReminders.insert(*shared).second) {
            alarms.push_back(&alarm);
        }
    }
    return alarms;
}

/// The sound of the last one that has one.
std::optional<std::string> soundName(const std::vector<const Alarm*>& alarms) {
    const auto last = std::find_if(alarms.rbegin(), alarms.rend(), [](const Alarm* alarm) {
        return alarm->reminderType() == ReminderType::Sound;
    });
    return last != alarms.rend()
               ? std::optional<std::string>(
                     (*last)->reminderDict->stringForKey(keys::url).value_or(defaultSoundName))
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
    const auto dueAlarms = takeDueAlarms();
    if (m_collaborators.defaults.boolForKey(preferences::issueAlarms)) {
        issue(dueAlarms);
    }
    if (m_collaborators.alarmWindow != nullptr) {
        m_collaborators.alarmWindow->showAlarmWindowIfNecessary();
    }
    m_firing = false;
    setAlarmTimer();
    if (!dueAlarms.empty()) {
        m_queueChanged();
    }
    if (m_collaborators.statusWindow != nullptr) {
        m_collaborators.statusWindow->reloadIfVisible();
    }
}

void AlarmFiring::fireAlarmIfDue() {
    const AlarmQueue& queue = m_collaborators.queue;
    if (!m_firing && !queue.empty() && queue.fireDate(0) <= m_collaborators.clock.now()) {
        fireAlarm();
    }
}

std::vector<Alarm> AlarmFiring::takeDueAlarms() {
    const Instant now = m_collaborators.clock.now();
    std::vector<Alarm> dueAlarms = m_collaborators.queue.takeDueAlarms(now);
    m_collaborators.firedAlarms.forgetBefore(now - rememberedSeconds);
    // A host that does not pair its messages makes two records of one.
    std::erase_if(dueAlarms, [&fired = m_collaborators.firedAlarms](const Alarm& alarm) {
        return !fired.add(*alarm.eventDict, *alarm.reminderDict, fireInstant(alarm));
    });
    return dueAlarms;
}

bool AlarmFiring::showsInWindow() const {
    return m_collaborators.alarmWindow != nullptr &&
           !m_collaborators.defaults.boolForKey(preferences::useNotificationCenter);
}

void AlarmFiring::issue(const std::vector<Alarm>& dueAlarms) {
    const auto alarms = withoutRepetitions(dueAlarms);
    for (const Alarm* alarm : alarms) {
        present(*alarm);
        m_collaborators.actions.carryOut(*alarm);
    }
    // A notification brings its own.
    const auto sound = showsInWindow() ? soundName(alarms) : std::nullopt;
    if (sound) {
        m_collaborators.sound.play(*sound);
    }
}

void AlarmFiring::present(const Alarm& alarm) {
    if (!isShown(alarm)) {
        return;
    }
    if (showsInWindow()) {
        m_collaborators.alarmWindow->addDisplayAlarm(alarm);
    } else {
        m_collaborators.notifications.addUserNotificationForAlarm(alarm);
    }
}

} // namespace plenzo
