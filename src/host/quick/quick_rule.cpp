#include "host/quick/quick_rule.h"

#include "host/ical/ical_time_text.h"

#include <algorithm>

namespace plenzo {

namespace {

const char* frequencyName(QuickUnit unit) {
    switch (unit) {
    case QuickUnit::Day:
        return "DAILY";
    case QuickUnit::Month:
        return "MONTHLY";
    case QuickUnit::Year:
        return "YEARLY";
    default:
        return "WEEKLY";
    }
}

std::string weekdayNames(const QuickRecurrence& recurrence) {
    constexpr const char* names[] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
    std::string text;
    const int position = recurrence.position;
    for (const int weekday : recurrence.weekdays) {
        text += text.empty() ? ";BYDAY=" : ",";
        text += (position != 0 ? std::to_string(position) : "") + names[weekday];
    }
    return text;
}

/// The last day of the series, or nothing.
std::optional<cctz::civil_day> lastDay(const QuickRecurrence& recurrence,
                                       const std::optional<QuickAmount>& length,
                                       cctz::civil_day start) {
    if (recurrence.until) {
        return std::max(*recurrence.until, start);
    }
    if (!length || length->unit == QuickUnit::Minute || length->unit == QuickUnit::Hour) {
        return std::nullopt;
    }
    const auto end = movedDay(start, length->count, length->unit);
    return end ? std::optional(*end - 1) : std::nullopt;
}

/// All of the day, in the form that the start asks for (RFC 5545, 3.3.10).
std::string untilText(cctz::civil_day day, const CalendarTime& start) {
    if (start.form == TimeForm::Date) {
        return icalDate(day);
    }
    return icalUniversalTime(start.zone.instantOf(cctz::civil_second(day + 1) - 1));
}

} // namespace

std::string quickRule(const QuickRecurrence& recurrence, const std::optional<QuickAmount>& length,
                      const CalendarTime& start) {
    std::string text = "FREQ=" + std::string(frequencyName(recurrence.unit));
    if (recurrence.interval > 1) {
        text += ";INTERVAL=" + std::to_string(recurrence.interval);
    }
    text += weekdayNames(recurrence);
    const auto last = lastDay(recurrence, length, cctz::civil_day(start.local));
    if (recurrence.count) {
        text += ";COUNT=" + std::to_string(*recurrence.count);
    } else if (last) {
        text += ";UNTIL=" + untilText(*last, start);
    }
    return text;
}

} // namespace plenzo
