#include "dates/relative_date_formatter.h"

#include "propertylist/format_string.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace plenzo {

namespace {

std::string_view wordKey(std::int64_t daysAfterBase) {
    switch (daysAfterBase) {
    case -1:
        return "Yesterday";
    case 0:
        return "Today";
    case 1:
        return "Tomorrow";
    default:
        return {};
    }
}

} // namespace

RelativeDateFormatter::RelativeDateFormatter(const std::string& locale, const TimeZone& timeZone,
                                             LocalizedString localizedString,
                                             std::function<Instant()> now)
    : DateFormatter(locale, timeZone), m_localizedString(std::move(localizedString)),
      m_now(std::move(now)) {}

std::string RelativeDateFormatter::stringFromDate(Instant date) const {
    if (!m_useRelativeDates || dateStyle() == FormatStyle::None) {
        return DateFormatter::stringFromDate(date);
    }
    std::string word = relativeWord(date);
    if (word.empty()) {
        return DateFormatter::stringFromDate(date);
    }
    if (timeStyle() == FormatStyle::None) {
        return word;
    }
    const std::string format = m_localizedString("%1$@ at %2$@");
    if (format.empty()) {
        return DateFormatter::stringFromDate(date);
    }
    return filledFormat(format,
                        {m_lowercase ? lowerCased(word) : word,
                         DateFormatter::stringFromDate(date, FormatStyle::None, timeStyle())});
}

std::string RelativeDateFormatter::relativeWord(Instant date) const {
    const auto day = CalendarDate::calendarDateWithDate(date, timeZone());
    const auto base =
        CalendarDate::calendarDateWithDate(m_baseDate ? *m_baseDate : m_now(), timeZone());
    if (!day || !base) {
        return {};
    }
    const std::string_view key = wordKey(day->dayOfCommonEra() - base->dayOfCommonEra());
    return key.empty() ? std::string() : m_localizedString(key);
}

} // namespace plenzo
