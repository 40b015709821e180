#include "host/quick/quick_dates.h"
#include "host/quick/quick_tokens.h"

#include <algorithm>

namespace plenzo {

/// The dates that are written with numbers.

namespace {

constexpr int century = 2000;
constexpr int yearsUntilALeapDay = 8;

/// "12" is 2012, "2012" itself; other lengths are no year.
std::optional<int> yearOf(std::string_view text) {
    const auto number = digitsOf(text);
    if (!number || (text.size() != 2 && text.size() != 4)) {
        return std::nullopt;
    }
    return text.size() == 2 ? century + *number : *number;
}

std::string_view nextPart(std::string_view& text, char separator) {
    const std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), part.size() + 1));
    return part;
}

std::optional<cctz::civil_day> isoDay(std::string_view text) {
    const std::string_view yearText = nextPart(text, '-');
    const auto year = digitsOf(yearText);
    const auto month = digitsOf(nextPart(text, '-'));
    const auto day = digitsOf(text);
    return yearText.size() == 4 && month && day ? existingDay(*year, *month, *day) : std::nullopt;
}

bool isDayOfMonth(const std::optional<int>& number) {
    constexpr int mostDays = 31;
    return number && *number >= 1 && *number <= mostDays;
}

} // namespace

std::optional<cctz::civil_day> QuickDates::coming(int month, int day) const {
    const auto thisYear = static_cast<int>(m_today.year());
    for (int year = thisYear; year <= thisYear + yearsUntilALeapDay; ++year) {
        const auto found = existingDay(year, month, day);
        if (found && *found >= m_today) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<QuickDay> QuickDates::numericDayAt(std::size_t index, bool isIntroduced) const {
    if (index >= m_tokens.size() || word(index, WordRole::NoDate)) {
        return std::nullopt;
    }
    const QuickToken& token = m_tokens[index];
    if (const auto day = isoDay(token.folded)) {
        return oneDay(day, 1);
    }
    if (Found day = writtenDate(token.folded, '/', m_order)) {
        return day;
    }
    const auto dots = std::count(token.folded.begin(), token.folded.end(), '.');
    const bool isDate = isIntroduced || token.hasPeriod || dots == 2;
    return isDate ? writtenDate(token.folded, '.', DayMonthOrder::DayFirst) : std::nullopt;
}

std::optional<QuickDay> QuickDates::writtenDate(std::string_view text, char separator,
                                                DayMonthOrder order) const {
    const bool hasYear = std::count(text.begin(), text.end(), separator) == 2;
    const auto first = digitsOf(nextPart(text, separator));
    const auto second = digitsOf(hasYear ? nextPart(text, separator) : text);
    const auto year = hasYear ? yearOf(text) : std::nullopt;
    if (!first || !second || (hasYear && !year)) {
        return std::nullopt;
    }
    const auto dayOf = [&](int month, int day) {
        return year ? existingDay(*year, month, day) : coming(month, day);
    };
    const bool isDayFirst = order == DayMonthOrder::DayFirst;
    auto day = isDayFirst ? dayOf(*second, *first) : dayOf(*first, *second);
    if (!day && separator == '/') { // "12/25" where the day comes first can only be the other
        day = isDayFirst ? dayOf(*first, *second) : dayOf(*second, *first);
    }
    return oneDay(day, 1);
}

std::optional<QuickDay> QuickDates::withYear(int month, int day, std::size_t index,
                                             std::size_t lengthBefore) const {
    constexpr int firstYear = 1900;
    constexpr int yearAfterLast = 3000;
    if (index < m_tokens.size() && m_tokens[index].folded.size() == 4) {
        const auto year = digitsOf(m_tokens[index].folded);
        if (year && *year >= firstYear && *year < yearAfterLast) {
            return oneDay(existingDay(*year, month, day), lengthBefore + 1);
        }
    }
    return oneDay(coming(month, day), lengthBefore);
}

/// "May 5", "Dec 24th 2027".
std::optional<QuickDay> QuickDates::monthDayAt(std::size_t index) const {
    const auto month = word(index, WordRole::Month);
    if (!month || index + 1 >= m_tokens.size()) {
        return std::nullopt;
    }
    const auto day = digitsOf(m_tokens[index + 1].folded);
    const std::size_t length = 2 + lengthOf(index + 2, WordRole::OrdinalEnding);
    const bool isClock =
        lengthOf(index + 2, WordRole::Meridiem) > 0 || lengthOf(index + 2, WordRole::ClockWord) > 0;
    return isDayOfMonth(day) && !isClock ? withYear(month->number, *day, index + length, length)
                                         : std::nullopt;
}

/// "5 May", "5th of May", "5. Mai 2027".
std::optional<QuickDay> QuickDates::dayMonthAt(std::size_t index) const {
    const auto day =
        index < m_tokens.size() ? digitsOf(m_tokens[index].folded) : std::optional<int>();
    if (!isDayOfMonth(day)) {
        return std::nullopt;
    }
    std::size_t length = 1 + lengthOf(index + 1, WordRole::OrdinalEnding);
    length += lengthOf(index + length, WordRole::Of);
    const auto month = word(index + length, WordRole::Month);
    return month ? withYear(month->number, *day, index + length + 1, length + 1) : std::nullopt;
}

/// "the 15th", "am 15.": the next day of that number.
std::optional<QuickDay> QuickDates::ordinalDayAt(std::size_t index) const {
    const auto number =
        index < m_tokens.size() ? digitsOf(m_tokens[index].folded) : std::optional<int>();
    const std::size_t ending = lengthOf(index + 1, WordRole::OrdinalEnding);
    if (!isDayOfMonth(number) || (ending == 0 && !m_tokens[index].hasPeriod)) {
        return std::nullopt;
    }
    for (cctz::civil_month month(m_today);; ++month) { // every second month has 31 days
        const auto day = existingDay(static_cast<int>(month.year()), month.month(), *number);
        if (month.year() > m_today.year() + 1 || (day && *day >= m_today)) {
            return oneDay(day, 1 + ending);
        }
    }
}

/// "in 3 days", "in a week".
std::optional<QuickDay> QuickDates::distantDayAt(std::size_t index) const {
    const std::size_t in = lengthOf(index, WordRole::In);
    QuickUnit unit = QuickUnit::Minute;
    const auto amount = in > 0 ? amountAt(index + in, unit) : std::nullopt;
    if (!amount || unit == QuickUnit::Minute || unit == QuickUnit::Hour) {
        return std::nullopt;
    }
    return oneDay(movedDay(m_today, amount->number, unit), in + amount->length);
}

/// "24-26 December", "Dec 24 - 26".
std::optional<QuickDay> QuickDates::numberRangeAt(std::size_t index) const {
    const std::size_t month = lengthOf(index, WordRole::Month);
    const std::size_t number = index + month;
    const std::size_t joint = number + 1;
    if (joint >= m_tokens.size() || m_tokens[joint].folded != "-") {
        return std::nullopt;
    }
    const auto first = digitsOf(m_tokens[number].folded);
    const auto last =
        joint + 1 < m_tokens.size() ? digitsOf(m_tokens[joint + 1].folded) : std::optional<int>();
    const auto name = word(month > 0 ? index : joint + 2, WordRole::Month);
    if (!isDayOfMonth(first) || !isDayOfMonth(last) || !name || *last < *first) {
        return std::nullopt;
    }
    constexpr std::size_t length = 4; // two numbers, the dash and the month
    Found range = withYear(name->number, *first, index + length, length);
    const auto end = range ? existingDay(static_cast<int>(range->first.year()), name->number, *last)
                           : std::nullopt;
    if (!end) {
        return std::nullopt;
    }
    range->last = *end;
    return range;
}

} // namespace plenzo
