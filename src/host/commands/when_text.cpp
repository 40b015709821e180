#include "host/commands/when_text.h"

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <memory>

namespace plenzo {

namespace {

using icu::DateFormat;

constexpr double millisecondsPerSecond = 1000;

/// The wall clock as ICU formats it: as if it were UTC.
std::string formatted(const cctz::civil_second& local, DateFormat::EStyle dateStyle,
                      DateFormat::EStyle timeStyle) {
    const std::unique_ptr<DateFormat> format(
        DateFormat::createDateTimeInstance(dateStyle, timeStyle, icu::Locale::getDefault()));
    if (!format) {
        return {};
    }
    format->setTimeZone(*icu::TimeZone::getGMT());
    const auto seconds = unixSecondsOf(CalendarZone().instantOf(local));
    icu::UnicodeString text;
    format->format(static_cast<double>(seconds) * millisecondsPerSecond, text);
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

std::string dayText(const cctz::civil_second& local) {
    return formatted(local, DateFormat::kFull, DateFormat::kNone);
}

cctz::civil_second localOf(const CalendarTime& time, const CalendarZone& zone) {
    return time.form == TimeForm::Zoned ? zone.localOf(instantOf(time, zone)) : time.local;
}

} // namespace

std::string timeText(const CalendarTime& time, const CalendarZone& zone) {
    const cctz::civil_second local = localOf(time, zone);
    return time.form == TimeForm::Date ? dayText(local)
                                       : formatted(local, DateFormat::kFull, DateFormat::kShort);
}

std::string spanText(const CalendarTime& start, const CalendarTime& end, const CalendarZone& zone) {
    std::string from = timeText(start, zone);
    if (start.form == TimeForm::Date) {
        const cctz::civil_second last = addDays(end.local, -1);
        return last > start.local ? from + " – " + dayText(last) : from;
    }
    const cctz::civil_second first = localOf(start, zone);
    const cctz::civil_second last = localOf(end, zone);
    if (last == first) {
        return from;
    }
    const bool isSameDay = cctz::civil_day(first) == cctz::civil_day(last);
    return from + " – " +
           (isSameDay ? formatted(last, DateFormat::kNone, DateFormat::kShort)
                      : timeText(end, zone));
}

} // namespace plenzo
