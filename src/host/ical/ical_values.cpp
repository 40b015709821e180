#include "host/ical/ical_values.h"

#include <strings.h>

#include <algorithm>
#include <cstdlib>

namespace plenzo {

namespace {

constexpr std::int64_t longestDurationDays = 36525;

icalvalue_kind kindOf(const icalvalue* value) {
    return value == nullptr ? ICAL_NO_VALUE : icalvalue_isa(value);
}

const char* rawTextOf(const icalvalue* value) {
    switch (kindOf(value)) {
    case ICAL_TEXT_VALUE:
        return icalvalue_get_text(value);
    case ICAL_X_VALUE:
        return icalvalue_get_x(value);
    case ICAL_URI_VALUE:
        return icalvalue_get_uri(value);
    case ICAL_CALADDRESS_VALUE:
        return icalvalue_get_caladdress(value);
    case ICAL_STRING_VALUE:
        return icalvalue_get_string(value);
    default:
        return nullptr;
    }
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view whiteSpace = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(whiteSpace);
    if (begin == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(begin, text.find_last_not_of(whiteSpace) - begin + 1));
}

std::optional<CalendarZone> zoneNamedBy(icalproperty* property, ZoneTable& zones) {
    icalparameter* parameter = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    const char* name = parameter == nullptr ? nullptr : icalparameter_get_tzid(parameter);
    return name == nullptr ? std::nullopt : zones.zoneNamed(name);
}

constexpr std::size_t longestLine = 400;

bool hasLongLine(std::string_view text) {
    while (text.size() > longestLine) {
        const std::size_t end = text.find('\n');
        if (end > longestLine) {
            return true;
        }
        text.remove_prefix(end + 1);
    }
    return false;
}

/// The text with its long lines folded. The library looks for the end of a line anew for every 80
/// bytes of it, which takes for ever on a line of megabytes.
std::string withFoldedLines(std::string_view text) {
    if (!hasLongLine(text)) {
        return std::string(text);
    }
    std::string folded;
    folded.reserve(text.size() + text.size() / 100);
    std::size_t lineLength = 0;
    for (const char character : text) {
        if (lineLength == longestLine && character != '\r' && character != '\n') {
            folded += "\r\n ";
            lineLength = 1;
        }
        folded += character;
        lineLength = character == '\n' ? 0 : lineLength + 1;
    }
    return folded;
}

bool isClockTime(const icaltimetype& time) {
    return time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 &&
           time.second >= 0 && time.second <= 60;
}

} // namespace

ComponentPointer parsedComponent(std::string_view text) {
    static const bool isPrepared = [] {
        icalerror_set_errors_are_fatal(0);
        return true;
    }();
    if (!isPrepared) {
        return nullptr;
    }
    return ComponentPointer(icalparser_parse_string(withFoldedLines(text).c_str()));
}

std::vector<icalproperty*> propertiesOf(icalcomponent* component, icalproperty_kind kind) {
    std::vector<icalproperty*> properties;
    icalproperty* property = icalcomponent_get_first_property(component, kind);
    for (; property != nullptr; property = icalcomponent_get_next_property(component, kind)) {
        properties.push_back(property);
    }
    return properties;
}

icalproperty* firstPropertyOf(icalcomponent* component, icalproperty_kind kind) {
    return icalcomponent_get_first_property(component, kind);
}

std::string textOf(const icalproperty* property) {
    const char* text = rawTextOf(icalproperty_get_value(property));
    return text == nullptr ? std::string() : trimmed(text);
}

std::string firstTextOf(icalcomponent* component, icalproperty_kind kind) {
    const icalproperty* property = firstPropertyOf(component, kind);
    return property == nullptr ? std::string() : textOf(property);
}

std::optional<CalendarTime> timeOf(icalproperty* property, ZoneTable& zones) {
    const icalvalue* value = icalproperty_get_value(property);
    switch (kindOf(value)) {
    case ICAL_DATE_VALUE:
        return calendarTimeOf(icalvalue_get_date(value), std::nullopt);
    case ICAL_DATETIME_VALUE:
        return calendarTimeOf(icalvalue_get_datetime(value), zoneNamedBy(property, zones));
    default:
        return std::nullopt;
    }
}

std::optional<SystemSeconds> universalTimeOf(icalproperty* property, ZoneTable& zones) {
    const auto time = timeOf(property, zones);
    return time ? std::optional(instantOf(*time, CalendarZone())) : std::nullopt;
}

std::optional<CalendarDuration> durationOf(const icalproperty* property) {
    const icalvalue* value = icalproperty_get_value(property);
    if (kindOf(value) != ICAL_DURATION_VALUE) {
        return std::nullopt;
    }
    return calendarDurationOf(icalvalue_get_duration(value));
}

std::optional<ExtraDate> periodOf(icalproperty* property, ZoneTable& zones) {
    const icalvalue* value = icalproperty_get_value(property);
    if (kindOf(value) != ICAL_PERIOD_VALUE) {
        return std::nullopt;
    }
    const icalperiodtype period = icalvalue_get_period(value);
    const auto zone = zoneNamedBy(property, zones);
    const auto start = calendarTimeOf(period.start, zone);
    if (!start) {
        return std::nullopt;
    }
    if (icaltime_is_null_time(period.end) == 0) {
        return ExtraDate{*start, calendarTimeOf(period.end, zone), std::nullopt};
    }
    return ExtraDate{*start, std::nullopt, calendarDurationOf(period.duration)};
}

std::string ruleTextOf(const icalproperty* property) {
    const icalvalue* value = icalproperty_get_value(property);
    if (kindOf(value) != ICAL_RECUR_VALUE) {
        return {};
    }
    const std::unique_ptr<char, decltype(&std::free)> text(icalvalue_as_ical_string_r(value),
                                                           std::free);
    return text ? std::string(text.get()) : std::string();
}

std::string mailAddressOf(const icalproperty* property) {
    constexpr std::string_view scheme = "mailto:";
    const std::string address = textOf(property);
    const bool isMail = address.size() > scheme.size() &&
                        strncasecmp(address.c_str(), scheme.data(), scheme.size()) == 0;
    return isMail ? address.substr(scheme.size()) : std::string();
}

icalproperty_status statusOf(icalcomponent* component) {
    const icalproperty* property = firstPropertyOf(component, ICAL_STATUS_PROPERTY);
    const icalvalue* value = property == nullptr ? nullptr : icalproperty_get_value(property);
    return kindOf(value) == ICAL_STATUS_VALUE ? icalvalue_get_status(value) : ICAL_STATUS_NONE;
}

// A leap second counts as the last second of its minute.
std::optional<CalendarTime> calendarTimeOf(const icaltimetype& time,
                                           const std::optional<CalendarZone>& zone) {
    const cctz::civil_day day(time.year, time.month, time.day);
    const bool isDay =
        day.month() == time.month && day.day() == time.day && time.year > 0 && time.year < 10000;
    if (!isDay || (time.is_date == 0 && !isClockTime(time))) {
        return std::nullopt;
    }
    if (time.is_date != 0) {
        return CalendarTime{TimeForm::Date, cctz::civil_second(day), {}};
    }
    const cctz::civil_second local(time.year, time.month, time.day, time.hour, time.minute,
                                   std::min(time.second, 59));
    if (icaltime_is_utc(time) != 0) {
        return CalendarTime{TimeForm::Zoned, local, CalendarZone()};
    }
    return zone ? CalendarTime{TimeForm::Zoned, local, *zone}
                : CalendarTime{TimeForm::Floating, local, {}};
}

std::optional<CalendarDuration> calendarDurationOf(const icaldurationtype& duration) {
    const std::int64_t sign = duration.is_neg != 0 ? -1 : 1;
    const std::int64_t days = static_cast<std::int64_t>(duration.weeks) * 7 + duration.days;
    const std::int64_t seconds = static_cast<std::int64_t>(duration.hours) * 3600 +
                                 static_cast<std::int64_t>(duration.minutes) * 60 +
                                 duration.seconds;
    if (days > longestDurationDays || seconds > longestDurationDays * 86400) {
        return std::nullopt;
    }
    return CalendarDuration{sign * days, sign * seconds};
}

int numberOf(const icalproperty* property) {
    const icalvalue* value = property == nullptr ? nullptr : icalproperty_get_value(property);
    return kindOf(value) == ICAL_INTEGER_VALUE ? icalvalue_get_integer(value) : 0;
}

std::vector<std::string> parseErrorsOf(icalcomponent* component) {
    std::vector<std::string> errors;
    for (icalproperty* property : propertiesOf(component, ICAL_XLICERROR_PROPERTY)) {
        const std::string text = textOf(property);
        if (!text.starts_with("No value for") &&
            !text.starts_with("Parse error in property name")) {
            errors.push_back(text);
        }
    }
    return errors;
}

} // namespace plenzo
