#include "model/occurrence_date.h"

#include "propertylist/values_for_keys.h"

namespace plenzo {

namespace {

bool isTrue(const Value* value) {
    return value != nullptr && value->boolValue();
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
CalendarDate localDate(Instant instant, const OccurrenceDateValues& values,
                       const TimeZone& systemZone) {
    const CalendarDate universal(instant, TimeZone::universal());
    if (isTrue(values.allDay)) {
        return localMidnightOfUniversalDay(universal, systemZone);
    }
    return isTrue(values.floating) ? universal.localTimeFromFloatingTime(systemZone)
                                   : CalendarDate(instant, systemZone);
}

} // namespace

std::optional<Instant> readableInstant(const Value* value) {
    const auto date = value != nullptr ? value->date() : std::nullopt;
    const auto instant = date ? std::optional(Instant(*date)) : std::nullopt;
    return instant && instant->isReadable() ? instant : std::nullopt;
}

std::optional<CalendarDate> eventDateInLocalTime(const OccurrenceDateValues& values,
                                                 CarryForward carryForward,
                                                 const AlarmContext& context) {
    if (const auto completed = readableInstant(values.completionDate)) {
        return CalendarDate(*completed, context.systemZone);
    }
    const auto instant = readableInstant(values.date);
    if (!instant) {
        return std::nullopt;
    }
    const auto date = localDate(*instant, values, context.systemZone);
    const bool carries = carryForward == CarryForward::Yes && isTrue(values.carry);
    return carries && date.instant() < context.now ? movedToToday(date, context.now) : date;
}

std::optional<CalendarDate> eventDateInLocalTime(const Dictionary& eventDict,
                                                 CarryForward carryForward,
                                                 const AlarmContext& context) {
    namespace number = keys::numbers;
    const auto [completed, date, isAllDay, isFloating, carries] =
        valuesForKeys<number::completionDate, number::date, number::allDay, number::floating,
                      number::carry>(eventDict);
    return eventDateInLocalTime(OccurrenceDateValues{.completionDate = completed,
                                                     .date = date,
                                                     .allDay = isAllDay,
                                                     .floating = isFloating,
                                                     .carry = carries},
                                carryForward, context);
}

} // namespace plenzo
