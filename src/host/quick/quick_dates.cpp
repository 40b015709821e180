#include "host/quick/quick_dates.h"

#include "host/quick/quick_tokens.h"

#include <algorithm>
#include <array>

namespace plenzo {

namespace {

constexpr int lastYear = 9998; // ends may be a day later
constexpr int daysOfWeek = 7;

cctz::civil_day mondayOf(cctz::civil_day day) {
    return day - weekdayOf(day);
}

} // namespace

int weekdayOf(cctz::civil_day day) {
    return static_cast<int>(cctz::get_weekday(day));
}

cctz::civil_day firstWeekdayFrom(cctz::civil_day from, int weekday) {
    return from + (weekday - weekdayOf(from) + daysOfWeek) % daysOfWeek;
}

std::optional<cctz::civil_day> existingDay(int year, int month, int day) {
    const cctz::civil_day result(year, month, day);
    const bool exists = year >= 1 && year <= lastYear && result.month() == month &&
                        result.day() == day && result.year() == year;
    return exists ? std::optional(result) : std::nullopt;
}

std::optional<cctz::civil_day> movedDay(cctz::civil_day day, int count, QuickUnit unit) {
    cctz::civil_day moved = day + count;
    if (unit == QuickUnit::Week) {
        moved = day + static_cast<std::int64_t>(count) * daysOfWeek;
    } else if (unit == QuickUnit::Month || unit == QuickUnit::Year) {
        constexpr std::int64_t monthsOfYear = 12;
        const cctz::civil_month month =
            cctz::civil_month(day) + count * (unit == QuickUnit::Year ? monthsOfYear : 1);
        const cctz::civil_day lastOfMonth = cctz::civil_day(month + 1) - 1;
        moved = cctz::civil_day(month) + (std::min(day.day(), lastOfMonth.day()) - 1);
    }
    return moved.year() >= 1 && moved.year() <= lastYear ? std::optional(moved) : std::nullopt;
}

std::optional<QuickDay> QuickDates::rangeAt(std::size_t index) const {
    if (const Found numbers = numberRangeAt(index)) {
        return numbers;
    }
    const std::size_t from = lengthOf(index, WordRole::From);
    Found first = dayAt(index + from);
    if (!first) {
        return std::nullopt;
    }
    first->length += from;
    const std::size_t second = index + first->length;
    const std::size_t joint = std::max(lengthOf(second, WordRole::To), //
                                       lengthOf(second, WordRole::Until));
    // "monday until friday": the second is counted from the first.
    const QuickDates later(m_tokens, first->first, m_order);
    const Found last = joint > 0 ? later.dayAt(second + joint) : std::nullopt;
    if (last && last->first >= first->first) {
        first->last = last->last;
        first->length += joint + last->length;
    }
    return first;
}

std::optional<QuickDay> QuickDates::dayAt(std::size_t index) const {
    std::size_t introduction = lengthOf(index, WordRole::On);
    introduction += lengthOf(index + introduction, WordRole::The);
    Found day = plainDayAt(index + introduction, introduction > 0);
    if (!day) {
        return std::nullopt;
    }
    const std::size_t after = index + introduction + day->length;
    auto part = word(after, WordRole::DayPart);
    part = part ? part : dayPartAt(after);
    if (part) {
        day->hour = part->number;
        day->length += part->length;
    }
    day->length += introduction;
    return day;
}

std::optional<WordMatch> QuickDates::dayPartAt(std::size_t index) const {
    const std::size_t introduction = lengthOf(index, WordRole::During);
    auto part = introduction > 0 ? word(index + introduction, WordRole::DayPart) : std::nullopt;
    if (part) {
        part->length += introduction;
    }
    return part;
}

std::optional<WordMatch> QuickDates::amountAt(std::size_t index, QuickUnit& unit) const {
    const auto count = numberAt(index);
    const auto unitWord = count ? word(index + 1, WordRole::Unit) : std::nullopt;
    if (!unitWord || *count < 1) {
        return std::nullopt;
    }
    unit = static_cast<QuickUnit>(unitWord->number);
    return WordMatch{*count, 1 + unitWord->length};
}

std::optional<int> QuickDates::numberAt(std::size_t index) const {
    if (index >= m_tokens.size()) {
        return std::nullopt;
    }
    const auto worded = word(index, WordRole::Number);
    return worded ? std::optional(worded->number) : digitsOf(m_tokens[index].folded);
}

std::size_t QuickDates::lengthOf(std::size_t index, WordRole role) const {
    const auto found = word(index, role);
    return found ? found->length : 0;
}

std::optional<QuickDay> QuickDates::oneDay(const std::optional<cctz::civil_day>& day,
                                           std::size_t length) const {
    return day ? std::optional(QuickDay{*day, *day, std::nullopt, false, length}) : std::nullopt;
}

std::optional<QuickDay> QuickDates::plainDayAt(std::size_t index, bool isIntroduced) const {
    if (index >= m_tokens.size()) {
        return std::nullopt;
    }
    if (Found day = wordedDayAt(index)) {
        return day;
    }
    if (Found day = weekdayAt(index, isIntroduced)) {
        return day;
    }
    if (Found day = numericDayAt(index, isIntroduced)) {
        return day;
    }
    if (Found day = monthDayAt(index)) {
        return day;
    }
    if (Found day = dayMonthAt(index)) {
        return day;
    }
    return isIntroduced ? ordinalDayAt(index) : distantDayAt(index);
}

std::optional<QuickDay> QuickDates::wordedDayAt(std::size_t index) const {
    if (const auto named = word(index, WordRole::NamedDay)) {
        return oneDay(movedDay(m_today, named->number, QuickUnit::Day), named->length);
    }
    if (const auto tonight = word(index, WordRole::Tonight)) {
        Found day = oneDay(m_today, tonight->length);
        day->hour = tonight->number;
        return day;
    }
    if (Found day = nextAt(index)) {
        return day;
    }
    return thisAt(index);
}

std::optional<QuickDay> QuickDates::nextAt(std::size_t index) const {
    const std::size_t next = lengthOf(index, WordRole::Next);
    if (next == 0) {
        return std::nullopt;
    }
    const cctz::civil_day nextMonday = mondayOf(m_today) + daysOfWeek;
    auto weekday = word(index + next, WordRole::Weekday);
    weekday = weekday ? weekday : word(index + next, WordRole::DoubtfulWeekday);
    if (weekday) {
        return oneDay(firstWeekdayFrom(nextMonday, weekday->number), next + weekday->length);
    }
    if (const auto found = word(index + next, WordRole::Weekend)) {
        return weekend(nextMonday, next + found->length);
    }
    const auto unit = word(index + next, WordRole::Unit);
    if (!unit || unit->number < static_cast<int>(QuickUnit::Week)) {
        return std::nullopt;
    }
    const std::array<cctz::civil_day, 3> firstDays = {
        nextMonday, cctz::civil_day(cctz::civil_month(m_today) + 1),
        cctz::civil_day(cctz::civil_year(m_today) + 1)};
    const auto which = static_cast<std::size_t>(unit->number - static_cast<int>(QuickUnit::Week));
    return oneDay(firstDays.at(which), next + unit->length);
}

std::optional<QuickDay> QuickDates::thisAt(std::size_t index) const {
    const std::size_t introduction = lengthOf(index, WordRole::This);
    if (introduction == 0) {
        return std::nullopt;
    }
    if (const auto part = word(index + introduction, WordRole::DayPart)) {
        Found day = oneDay(m_today, introduction + part->length);
        day->hour = part->number;
        return day;
    }
    if (const auto found = word(index + introduction, WordRole::Weekend)) {
        return weekend(m_today, introduction + found->length);
    }
    Found day = weekdayAt(index + introduction, true);
    if (day) {
        day->length += introduction;
    }
    return day;
}

std::optional<QuickDay> QuickDates::weekend(cctz::civil_day from, std::size_t length) const {
    constexpr int saturday = 5;
    const cctz::civil_day first = firstWeekdayFrom(from, saturday);
    return QuickDay{first, first + 1, std::nullopt, false, length};
}

/// "Monday Night Football".
bool QuickDates::isName(std::size_t index) const {
    const auto night = word(index + 1, WordRole::NightOfName);
    return night && m_tokens[index + 1].isCapitalized && index + 2 < m_tokens.size() &&
           m_tokens[index].isCapitalized && m_tokens[index + 2].isCapitalized;
}

std::optional<QuickDay> QuickDates::weekdayAt(std::size_t index, bool isIntroduced) const {
    auto weekday = word(index, WordRole::Weekday);
    if (!weekday) {
        weekday = word(index, WordRole::DoubtfulWeekday);
        const bool isClear = index + 1 >= m_tokens.size() ||
                             lengthOf(index + 1, WordRole::At) > 0 ||
                             lengthOf(index + 1, WordRole::From) > 0 ||
                             digitsOf(m_tokens[index + 1].folded.substr(0, 1));
        weekday = isIntroduced || isClear ? weekday : std::nullopt;
    }
    if (!weekday || (!isIntroduced && isName(index))) {
        return std::nullopt;
    }
    // "Friday 13 November" is that day, whatever its weekday.
    const std::size_t next =
        index + weekday->length + lengthOf(index + weekday->length, WordRole::The);
    for (Found dated : {numericDayAt(next, false), monthDayAt(next), dayMonthAt(next)}) {
        if (dated) {
            dated->length += next - index;
            return dated;
        }
    }
    Found day = oneDay(firstWeekdayFrom(m_today, weekday->number), weekday->length);
    day->movesByWeeks = true;
    return day;
}

} // namespace plenzo
