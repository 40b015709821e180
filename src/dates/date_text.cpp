#include "dates/date_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace plenzo {

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Keeps the words for infinity and NaN from being read as numbers.
bool beginsNumber(std::string_view text) {
    const std::size_t digits = text.starts_with('.') ? 1 : 0;
    return text.size() > digits && isDigit(text[digits]);
}

std::string fixedPoint(double number, int decimals) {
    // The largest double has 309 digits before the point.
    std::array<char, 320> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number,
                                      std::chars_format::fixed, decimals);
    return {text.data(), result.ptr};
}

void appendPadded(std::string& text, std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    text.append(width - std::min(width, digits.size()), '0').append(digits);
}

/// The whole milliseconds since the reference date, rounded down. A fifth of a microsecond makes
/// up for a double's own error: a written ".123" must not become 122.
double wholeMilliseconds(Instant date) {
    return std::floor(date.secondsSinceReferenceDate() * 1000 + 0.0002);
}

} // namespace

std::optional<double> leadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    if (!beginsNumber(text)) {
        return 0;
    }
    double number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        return std::nullopt;
    }
    return isNegative ? -number : number;
}

std::string networkString(Instant date) {
    return fixedPoint(date.secondsSinceReferenceDate(), 6);
}

std::optional<Instant> dateWithNetworkString(std::string_view text) {
    const auto seconds = leadingNumber(text);
    return seconds ? std::optional(Instant(*seconds)) : std::nullopt;
}

std::string archiveToString(const CalendarDate& date) {
    return fixedPoint(date.instant().secondsSinceReferenceDate(), 0) + ':' + date.timeZone().name();
}

std::optional<CalendarDate> unarchiveFromString(std::string_view text, const TimeZone& systemZone) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto zone = TimeZone::named(text.substr(colon + 1));
    return CalendarDate::calendarDateWithDate(dateWithNetworkString(text.substr(0, colon)),
                                              zone.value_or(systemZone));
}

std::string rfc3339String(Instant date) {
    const double milliseconds = wholeMilliseconds(date);
    const double seconds = std::floor(milliseconds / 1000);
    const DateFields fields = CalendarDate(Instant(seconds)).fields();
    if (!date.isReadable() || fields.year < 0 || fields.year > 9999) {
        return {};
    }
    struct Part {
        std::int64_t number;
        std::size_t width;
        char after;
    };
    const Part parts[] = {
        {fields.year, 4, '-'},
        {fields.month, 2, '-'},
        {fields.day, 2, 'T'},
        {fields.hour, 2, ':'},
        {fields.minute, 2, ':'},
        {fields.second, 2, '.'},
        {static_cast<std::int64_t>(milliseconds - seconds * 1000), 3, 'Z'},
    };
    std::string text;
    for (const Part& part : parts) {
        appendPadded(text, part.number, part.width);
        text += part.after;
    }
    return text;
}

} // namespace plenzo
