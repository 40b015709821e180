#include "dates/unicode_date_format.h"

#include <unicode/gregocal.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace plenzo {

namespace {

/// Stands for the zone in patterns and in what they give: a character for private use.
constexpr char16_t zoneMark = u'\uE000';
constexpr char16_t narrowSpace = u'\u202F';
constexpr double millisecondsPerSecond = 1000;
constexpr cctz::civil_second epoch;

icu::DateFormat::EStyle unicodeStyle(FormatStyle style) {
    switch (style) {
    case FormatStyle::Short:
        return icu::DateFormat::kShort;
    case FormatStyle::Medium:
        return icu::DateFormat::kMedium;
    case FormatStyle::Long:
        return icu::DateFormat::kLong;
    case FormatStyle::Full:
        return icu::DateFormat::kFull;
    case FormatStyle::None:
        break;
    }
    return icu::DateFormat::kNone;
}

/// The pattern with a mark in the zone's place. Narrow spaces, which many fonts lack and which
/// nobody types, become plain ones.
icu::UnicodeString adaptedPattern(const icu::UnicodeString& pattern) {
    icu::UnicodeString adapted;
    bool isQuoted = false;
    for (int32_t index = 0; index < pattern.length(); ++index) {
        const char16_t character = pattern.charAt(index);
        isQuoted = isQuoted != (character == u'\'');
        if (isQuoted || character != u'z') {
            adapted.append(character == narrowSpace ? u' ' : character);
        } else if (index == 0 || pattern.charAt(index - 1) != u'z') {
            adapted.append(zoneMark);
        }
    }
    return adapted;
}

/// The locale's calendar, which need not be the Gregorian one, in UTC. A Gregorian one is
/// proleptic, as all dates here are.
std::unique_ptr<icu::Calendar> calendarOf(const icu::Locale& locale) {
    UErrorCode error = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar(
        icu::Calendar::createInstance(*icu::TimeZone::getGMT(), locale, error));
    if (auto* gregorian = dynamic_cast<icu::GregorianCalendar*>(calendar.get())) {
        gregorian->setGregorianChange(U_DATE_MIN, error);
    }
    return U_SUCCESS(error) ? std::move(calendar) : nullptr;
}

UDate startOfTwoDigitYears() {
    const cctz::civil_second start(DateFormatter::twoDigitCutOffYear, 1, 1);
    return static_cast<double>(start - epoch) * millisecondsPerSecond;
}

} // namespace

UnicodeDateFormat::UnicodeDateFormat(std::unique_ptr<icu::SimpleDateFormat> format)
    : m_format(std::move(format)) {}

std::unique_ptr<UnicodeDateFormat>
UnicodeDateFormat::create(const icu::Locale& locale, FormatStyle dateStyle, FormatStyle timeStyle) {
    std::unique_ptr<icu::DateFormat> created(icu::DateFormat::createDateTimeInstance(
        unicodeStyle(dateStyle), unicodeStyle(timeStyle), locale));
    auto calendar = calendarOf(locale);
    auto* simple = dynamic_cast<icu::SimpleDateFormat*>(created.get());
    if (simple == nullptr || calendar == nullptr) {
        return nullptr;
    }
    static_cast<void>(created.release());
    std::unique_ptr<icu::SimpleDateFormat> format(simple);
    icu::UnicodeString pattern;
    format->applyPattern(adaptedPattern(format->toPattern(pattern)));
    format->adoptCalendar(calendar.release());
    format->setLenient(false);
    UErrorCode error = U_ZERO_ERROR;
    format->set2DigitYearStart(startOfTwoDigitYears(), error);
    return std::unique_ptr<UnicodeDateFormat>(new UnicodeDateFormat(std::move(format)));
}

std::string UnicodeDateFormat::text(const cctz::civil_second& time,
                                    const std::string& zoneAbbreviation) const {
    icu::UnicodeString text;
    m_format->format(static_cast<double>(time - epoch) * millisecondsPerSecond, text);
    text.findAndReplace(icu::UnicodeString(zoneMark),
                        icu::UnicodeString::fromUTF8(zoneAbbreviation));
    std::string utf8;
    return text.toUTF8String(utf8);
}

std::optional<cctz::civil_second> UnicodeDateFormat::time(std::string_view text) const {
    constexpr std::size_t longestTextLength = 1000;
    if (text.size() > longestTextLength) {
        return std::nullopt;
    }
    const auto unicode = icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    icu::ParsePosition position(0);
    const UDate date = m_format->parse(unicode, position);
    if (position.getIndex() != unicode.length() || position.getErrorIndex() >= 0) {
        return std::nullopt;
    }
    return epoch + static_cast<std::int64_t>(std::floor(date / millisecondsPerSecond));
}

} // namespace plenzo
