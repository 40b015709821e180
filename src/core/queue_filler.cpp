#include "core/queue_filler.h"

#include <algorithm>
#include <cstddef>

namespace plenzo {

namespace {

/// Of a record with absurdly many the rest is not asked for early.
constexpr std::size_t prefetchedReminderCount = 16;

void prefetchReminders(const EventDict& eventDict) {
    const Array* reminders = eventDict ? eventDict->arrayForKey(keys::rem) : nullptr;
    if (reminders == nullptr) {
        return;
    }
    const std::size_t count = std::min(reminders->size(), prefetchedReminderCount);
    for (const Value& reminder : std::span(reminders->begin(), count)) {
        if (const Dictionary* reminderDict = reminder.dictionary()) {
            reminderDict->prefetch();
        }
    }
}

void prefetchReminders(RecordGroup group) {
    for (const EventDict& eventDict : group) {
        if (const Array* reminders = eventDict ? eventDict->arrayForKey(keys::rem) : nullptr) {
            __builtin_prefetch(reminders->begin());
        }
    }
    for (const EventDict& eventDict : group) {
        prefetchReminders(eventDict);
    }
}

} // namespace

void QueueFiller::appendAlarmsOf(RecordGroup group) {
    prefetchReminders(group);
    for (const EventDict& eventDict : group) {
        if (eventDict && !isDeletionNotice(*eventDict)) {
            appendAlarmsOf(eventDict);
        }
    }
}

void QueueFiller::appendAlarmsOf(const EventDict& eventDict) {
    m_reminders.clear();
    appendUpcomingReminders(*eventDict, m_issueTime, ProximityAlarms::Exclude, m_context,
                            m_reminders);
    for (const UpcomingReminder& reminder : m_reminders) {
        m_queue.append(eventDict, reminder, m_context.systemZone);
    }
}

} // namespace plenzo
