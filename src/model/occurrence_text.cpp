#include "model/occurrence_text.h"

#include "dates/date_formatter.h"

#include <utility>

namespace plenzo {

namespace {

/// "end" minus "date" in seconds, 0 when either is absent or has no calendar fields.
double durationSeconds(const Dictionary& eventDict) {
    const auto start = eventDict.dateForKey(keys::date);
    const auto end = eventDict.dateForKey(keys::end);
    if (!start || !end || !Instant(*start).isReadable() || !Instant(*end).isReadable()) {
        return 0;
    }
    return Instant(*end) - Instant(*start);
}

CalendarDate startOf(const Alarm& alarm, const AlarmContext& context) {
    const auto start = alarm.eventDict
                           ? eventDateInLocalTime(*alarm.eventDict, CarryForward::No, context)
                           : std::nullopt;
    const CalendarDate otherwise =
        alarm.fireDate.value_or(CalendarDate(context.now, context.systemZone));
    return start.value_or(otherwise);
}

bool isSameDay(const DateFields& left, const DateFields& right) {
    return left.year == right.year && left.month == right.month && left.day == right.day;
}

bool isSameTime(const DateFields& left, const DateFields& right) {
    return left.hour == right.hour && left.minute == right.minute;
}

} // namespace

std::string dateRangeToString(const Alarm& alarm, const AlarmContext& context,
                              const std::string& locale) {
    const CalendarDate start = startOf(alarm, context);
    const double duration = alarm.eventDict ? durationSeconds(*alarm.eventDict) : 0;
    const CalendarDate end(start.instant() + duration, start.timeZone());
    const DateFields startFields = start.fields();
    const DateFields endFields = end.fields();

    const bool allDay = alarm.eventBool(keys::allDay);
    const bool sameDay = isSameDay(startFields, endFields);
    const bool single = sameDay && (allDay || isSameTime(startFields, endFields));
    const FormatStyle timeStyle = allDay ? FormatStyle::None : FormatStyle::Short;
    std::string first =
        timeToString(start, FormatStyle::Full, timeStyle, single && !allDay, locale);
    if (single) {
        return first;
    }
    const FormatStyle endDateStyle = sameDay ? FormatStyle::None : FormatStyle::Full;
    return first + " - " + timeToString(end, endDateStyle, timeStyle, !allDay, locale);
}

} // namespace plenzo
