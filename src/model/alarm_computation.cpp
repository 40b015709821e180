#include "model/alarm_computation.h"

#include "propertylist/values_for_keys.h"

#include <cstdlib>

namespace plenzo {

namespace number = keys::numbers;

namespace {

constexpr double secondsPerDay = 86400.0;

/// What every reminder entry of one occurrence is computed from.
struct Occurrence {
    std::optional<CalendarDate> localDate;
    std::optional<Instant> issueTime;
    ProximityAlarms proximityAlarms;
    const AlarmContext& context;
};

/// What is read of a reminder entry.
struct ReminderEntry {
    ReminderType type;
    const Value* absoluteDate;
    const Value* relativeSeconds;
    const Value* acknowledged;
};

ReminderEntry reminderEntry(const Dictionary& reminderDict) {
    const auto [typeValue, absoluteDate, relativeSeconds, acknowledged] =
        valuesForKeys<number::type, number::abs, number::rel, number::ack>(reminderDict);
    return {.type = typeValue != nullptr ? reminderType(*typeValue) : ReminderType::Display,
            .absoluteDate = absoluteDate,
            .relativeSeconds = relativeSeconds,
            .acknowledged = acknowledged};
}

/// Whole days since the reference date, truncated toward zero.
std::int64_t dayNumber(Instant instant) {
    return Value(instant.secondsSinceReferenceDate() / secondsPerDay).integerValue();
}

std::int64_t daysFromToday(const Occurrence& occurrence) {
    const std::int64_t today = dayNumber(occurrence.context.now);
    const std::int64_t day = occurrence.localDate ? dayNumber(occurrence.localDate->instant()) : 0;
    return std::abs(day - today);
}

bool asksForAllProximityAlarms(const Occurrence& occurrence, ReminderType type) {
    return occurrence.proximityAlarms == ProximityAlarms::IncludeAll &&
           type == ReminderType::Proximity;
}

/// Whether an alarm at this date is still to fire, and soon enough.
bool isUpcoming(const Occurrence& occurrence, const ReminderEntry& entry, Instant fireDate) {
    const Instant from = occurrence.issueTime.value_or(occurrence.context.now);
    const double leadTimeSeconds = fireDate - from;
    if (leadTimeSeconds < 0 && !asksForAllProximityAlarms(occurrence, entry.type)) {
        return false;
    }
    if (!occurrence.issueTime && leadTimeSeconds > alarmHorizonSeconds) {
        return false;
    }
    const auto acknowledged = readableInstant(entry.acknowledged);
    return !acknowledged || *acknowledged <= fireDate;
}

std::optional<UpcomingReminder> absoluteReminder(const Occurrence& occurrence,
                                                 const ReminderEntry& entry) {
    const auto fireDate = readableInstant(entry.absoluteDate);
    if (!fireDate || !isUpcoming(occurrence, entry, *fireDate)) {
        return std::nullopt;
    }
    return UpcomingReminder{.fireDate = fireDate, .fireDay = daysFromToday(occurrence)};
}

std::optional<UpcomingReminder> relativeReminder(const Occurrence& occurrence,
                                                 const ReminderEntry& entry) {
    const bool isAskedFor = asksForAllProximityAlarms(occurrence, entry.type);
    if (!occurrence.localDate) {
        return isAskedFor ? std::optional(UpcomingReminder()) : std::nullopt;
    }
    if (entry.type == ReminderType::Proximity && !isAskedFor) {
        return std::nullopt;
    }
    const double seconds =
        entry.relativeSeconds != nullptr ? entry.relativeSeconds->doubleValue() : 0;
    const Instant fireDate = occurrence.localDate->instant() + seconds;
    if (!fireDate.isReadable() || !isUpcoming(occurrence, entry, fireDate)) {
        return std::nullopt;
    }
    return UpcomingReminder{.fireDate = fireDate};
}

std::optional<UpcomingReminder> upcomingReminder(const Occurrence& occurrence,
                                                 const Dictionary& reminderDict) {
    const ReminderEntry entry = reminderEntry(reminderDict);
    if (entry.type == ReminderType::NoAction) {
        return std::nullopt;
    }
    auto reminder = entry.absoluteDate != nullptr ? absoluteReminder(occurrence, entry)
                                                  : relativeReminder(occurrence, entry);
    if (reminder) {
        reminder->reminderDict = &reminderDict;
    }
    return reminder;
}

} // namespace

void appendUpcomingReminders(const Dictionary& eventDict, std::optional<Instant> issueTime,
                             ProximityAlarms proximityAlarms, const AlarmContext& context,
                             std::vector<UpcomingReminder>& reminders) {
    const auto [remValue, completed, dateValue, isAllDay, isFloating] =
        valuesForKeys<number::rem, number::completionDate, number::date, number::allDay,
                      number::floating>(eventDict);
    const Array* entries = remValue != nullptr ? remValue->array() : nullptr;
    if (entries == nullptr || entries->empty()) {
        return;
    }
    const OccurrenceDateValues dateValues{.completionDate = completed,
                                          .date = dateValue,
                                          .allDay = isAllDay,
                                          .floating = isFloating,
                                          .carry = nullptr};
    const Occurrence occurrence{.localDate =
                                    eventDateInLocalTime(dateValues, CarryForward::No, context),
                                .issueTime = issueTime,
                                .proximityAlarms = proximityAlarms,
                                .context = context};
    for (const Value& entry : *entries) {
        const Dictionary* reminderDict = entry.dictionary();
        const auto reminder =
            reminderDict != nullptr ? upcomingReminder(occurrence, *reminderDict) : std::nullopt;
        if (reminder) {
            reminders.push_back(*reminder);
        }
    }
}

std::vector<Alarm> alarmsForEventDict(const EventDict& eventDict, std::optional<Instant> issueTime,
                                      ProximityAlarms proximityAlarms,
                                      const AlarmContext& context) {
    std::vector<UpcomingReminder> reminders;
    if (eventDict) {
        appendUpcomingReminders(*eventDict, issueTime, proximityAlarms, context, reminders);
    }
    std::vector<Alarm> alarms;
    alarms.reserve(reminders.size());
    for (const UpcomingReminder& reminder : reminders) {
        Alarm& alarm = alarms.emplace_back();
        alarm.eventDict = eventDict;
        alarm.reminderDict = *reminder.reminderDict;
        alarm.fireDay = reminder.fireDay;
        if (reminder.fireDate) {
            alarm.fireDate = CalendarDate(*reminder.fireDate, context.systemZone);
        }
    }
    return alarms;
}

} // namespace plenzo
