#include "model/alarm_computation.h"

#include <cstdlib>
#include <utility>

namespace plenzo {

namespace {

constexpr double secondsPerDay = 86400.0;

/// What every reminder entry of one occurrence is computed from.
struct Occurrence {
    const EventDict& eventDict;
    std::optional<CalendarDate> localDate;
    std::optional<Instant> issueTime;
    ProximityAlarms proximityAlarms;
    const AlarmContext& context;
};

/// A date without calendar fields (infinite, NaN, absurdly far) counts as absent.
std::optional<Instant> instantForKey(const Dictionary& dictionary, const Key& key) {
    const auto date = dictionary.dateForKey(key);
    const auto instant = date ? std::optional(Instant(*date)) : std::nullopt;
    return instant && instant->isReadable() ? instant : std::nullopt;
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

bool relativeAlarmApplies(const Occurrence& occurrence, ReminderType type) {
    if (!occurrence.localDate) {
        return asksForAllProximityAlarms(occurrence, type);
    }
    return type != ReminderType::Proximity || asksForAllProximityAlarms(occurrence, type);
}

/// Whether an alarm at this date is still to fire, and soon enough.
bool isDue(const Occurrence& occurrence, const Dictionary& reminder, Instant fireDate) {
    const Instant from = occurrence.issueTime.value_or(occurrence.context.now);
    const double leadTimeSeconds = fireDate - from;
    if (leadTimeSeconds < 0 && !asksForAllProximityAlarms(occurrence, reminderType(reminder))) {
        return false;
    }
    const auto acknowledged = instantForKey(reminder, keys::ack);
    if (acknowledged && *acknowledged > fireDate) {
        return false;
    }
    return occurrence.issueTime || leadTimeSeconds <= alarmHorizonSeconds;
}

Alarm& append(const Occurrence& occurrence, const Dictionary& reminder,
              std::vector<Alarm>& alarms) {
    Alarm& alarm = alarms.emplace_back();
    alarm.eventDict = occurrence.eventDict;
    alarm.reminderDict = reminder;
    return alarm;
}

void appendAbsoluteAlarm(const Occurrence& occurrence, const Dictionary& reminder,
                         std::vector<Alarm>& alarms) {
    const auto fireDate = instantForKey(reminder, keys::abs);
    if (fireDate && isDue(occurrence, reminder, *fireDate)) {
        Alarm& alarm = append(occurrence, reminder, alarms);
        alarm.fireDate = CalendarDate(*fireDate, occurrence.context.systemZone);
        alarm.fireDay = daysFromToday(occurrence);
    }
}

void appendRelativeAlarm(const Occurrence& occurrence, const Dictionary& reminder,
                         std::vector<Alarm>& alarms) {
    if (!relativeAlarmApplies(occurrence, reminderType(reminder))) {
        return;
    }
    if (!occurrence.localDate) {
        append(occurrence, reminder, alarms);
        return;
    }
    const Instant fireDate = occurrence.localDate->instant() + reminder.doubleForKey(keys::rel);
    if (fireDate.isReadable() && isDue(occurrence, reminder, fireDate)) {
        append(occurrence, reminder, alarms).fireDate =
            CalendarDate(fireDate, occurrence.localDate->timeZone());
    }
}

void appendAlarmForReminder(const Occurrence& occurrence, const Dictionary& reminder,
                            std::vector<Alarm>& alarms) {
    if (reminderType(reminder) == ReminderType::NoAction) {
        return;
    }
    if (reminder.contains(keys::abs)) {
        appendAbsoluteAlarm(occurrence, reminder, alarms);
    } else {
        appendRelativeAlarm(occurrence, reminder, alarms);
    }
}

CalendarDate localMidnightOfUniversalDay(const CalendarDate& date, const TimeZone& systemZone) {
    const DateFields day = date.fields();
    return CalendarDate::dateWithYear(day.year, day.month, day.day, 0, 0, 0, false, systemZone)
        .value_or(date);
}

CalendarDate movedToToday(const CalendarDate& date, Instant now) {
    const DateFields today = CalendarDate(now, date.timeZone()).fields();
    const DateComponents day{.year = today.year, .month = today.month, .day = today.day};
    return date.calendarDateByApplyingComps(day, date.timeZone()).value_or(date);
}

/// All-day and floating dates hold their local wall clock in UTC.
CalendarDate localDate(Instant instant, const Dictionary& eventDict, const TimeZone& systemZone) {
    const CalendarDate universal(instant, TimeZone::universal());
    if (eventDict.boolForKey(keys::allDay)) {
        return localMidnightOfUniversalDay(universal, systemZone);
    }
    return eventDict.boolForKey(keys::floating) ? universal.localTimeFromFloatingTime(systemZone)
                                                : CalendarDate(instant, systemZone);
}

} // namespace

std::optional<CalendarDate> eventDateInLocalTime(const Dictionary& eventDict,
                                                 CarryForward carryForward,
                                                 const AlarmContext& context) {
    if (const auto completed = instantForKey(eventDict, keys::completionDate)) {
        return CalendarDate(*completed, context.systemZone);
    }
    const auto instant = instantForKey(eventDict, keys::date);
    if (!instant) {
        return std::nullopt;
    }
    const auto date = localDate(*instant, eventDict, context.systemZone);
    const bool carries = carryForward == CarryForward::Yes && eventDict.boolForKey(keys::carry);
    return carries && date.instant() < context.now ? movedToToday(date, context.now) : date;
}

std::vector<Alarm> alarmsForEventDict(const EventDict& eventDict, std::optional<Instant> issueTime,
                                      ProximityAlarms proximityAlarms,
                                      const AlarmContext& context) {
    std::vector<Alarm> alarms;
    appendAlarmsForEventDict(eventDict, issueTime, proximityAlarms, context, alarms);
    return alarms;
}

void appendAlarmsForEventDict(const EventDict& eventDict, std::optional<Instant> issueTime,
                              ProximityAlarms proximityAlarms, const AlarmContext& context,
                              std::vector<Alarm>& alarms) {
    const Array* reminders = eventDict ? eventDict->arrayForKey(keys::rem) : nullptr;
    if (reminders == nullptr) {
        return;
    }
    const Occurrence occurrence{.eventDict = eventDict,
                                .localDate =
                                    eventDateInLocalTime(*eventDict, CarryForward::No, context),
                                .issueTime = issueTime,
                                .proximityAlarms = proximityAlarms,
                                .context = context};
    for (const Value& reminder : *reminders) {
        if (const Dictionary* entry = reminder.dictionary()) {
            appendAlarmForReminder(occurrence, *entry, alarms);
        }
    }
}

} // namespace plenzo
