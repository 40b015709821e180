#include "dates/date_formatter.h"

#include "dates/unicode_date_format.h"
#include "dates/unicode_locale.h"
#include "dates/zone_rules.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace plenzo {

/// The formats of one locale, each made when it is first used.
class DateFormatter::Formats {
public:
    explicit Formats(const std::string& locale) : m_locale(unicodeLocale(locale)) {}

    [[nodiscard]] const icu::Locale& locale() const { return m_locale; }

    /// Null when both styles are none, or when there is no data for any locale at all.
    const UnicodeDateFormat* format(FormatStyle dateStyle, FormatStyle timeStyle) {
        const auto index =
            static_cast<std::size_t>(dateStyle) * styleCount + static_cast<std::size_t>(timeStyle);
        if (index == 0 || index >= m_formats.size()) {
            return nullptr;
        }
        if (m_formats[index] == nullptr) {
            m_formats[index] = UnicodeDateFormat::create(m_locale, dateStyle, timeStyle);
        }
        return m_formats[index].get();
    }

private:
    static constexpr std::size_t styleCount = 5;

    icu::Locale m_locale;
    std::array<std::unique_ptr<UnicodeDateFormat>, styleCount * styleCount> m_formats;
};

DateFormatter::DateFormatter(const std::string& locale, const TimeZone& timeZone)
    : m_formats(std::make_unique<Formats>(locale)), m_timeZone(timeZone) {}

DateFormatter::DateFormatter(DateFormatter&&) noexcept = default;

DateFormatter& DateFormatter::operator=(DateFormatter&&) noexcept = default;

DateFormatter::~DateFormatter() = default;

std::string DateFormatter::stringFromDate(Instant date) const {
    return stringFromDate(date, m_dateStyle, m_timeStyle);
}

std::string DateFormatter::stringFromDate(Instant date, FormatStyle dateStyle,
                                          FormatStyle timeStyle) const {
    const UnicodeDateFormat* format = m_formats->format(dateStyle, timeStyle);
    if (format == nullptr || !date.isReadable()) {
        return {};
    }
    return format->text(civilTime(date, m_timeZone), m_timeZone.abbreviation(date));
}

std::optional<std::string> DateFormatter::stringForObjectValue(const Value& value) const {
    const std::optional<Date> date = value.date();
    return date ? std::optional(stringFromDate(Instant(*date))) : std::nullopt;
}

std::optional<Instant> DateFormatter::dateFromString(std::string_view text) const {
    const UnicodeDateFormat* format = m_formats->format(m_dateStyle, m_timeStyle);
    const auto time = format != nullptr ? format->time(text) : std::nullopt;
    return time ? instantOf(*time, m_timeZone) : std::nullopt;
}

std::string DateFormatter::lowerCased(const std::string& text) const {
    std::string lowerCase;
    return icu::UnicodeString::fromUTF8(text).toLower(m_formats->locale()).toUTF8String(lowerCase);
}

std::string timeToString(const CalendarDate& date, FormatStyle dateStyle, FormatStyle timeStyle,
                         bool includeTimeZone, const std::string& locale) {
    DateFormatter formatter(locale, date.timeZone());
    formatter.setDateStyle(dateStyle);
    formatter.setTimeStyle(timeStyle);
    const std::string text = formatter.stringFromDate(date.instant());
    return includeTimeZone ? text + ' ' + date.timeZone().abbreviation(date.instant()) : text;
}

} // namespace plenzo
