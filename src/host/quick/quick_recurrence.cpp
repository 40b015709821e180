#include "host/quick/quick_recurrence.h"

#include "host/quick/quick_tokens.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr int largestInterval = 9999;

} // namespace

std::size_t QuickRecurrences::lengthOf(std::size_t index, WordRole role) const {
    const auto found = word(index, role);
    return found ? found->length : 0;
}

std::optional<QuickRecurrence> QuickRecurrences::recurrenceAt(std::size_t index,
                                                              std::size_t& length) const {
    QuickRecurrence recurrence;
    length = readPositioned(index, recurrence);
    if (length > 0) {
        return recurrence;
    }
    length = lengthOf(index, WordRole::Every);
    if (length == 0) {
        return std::nullopt;
    }
    length += readInterval(index + length, recurrence);
    const std::size_t what = readRecurring(index + length, recurrence);
    if (what == 0 || recurrence.interval < 1 || recurrence.interval > largestInterval) {
        return std::nullopt;
    }
    length += what;
    return recurrence;
}

/// "every last friday", "first monday of every month". "every second friday" is every other one,
/// unless the month is named.
std::size_t QuickRecurrences::readPositioned(std::size_t index, QuickRecurrence& recurrence) const {
    std::size_t length = lengthOf(index, WordRole::Every);
    bool isEvery = length > 0;
    const auto position = word(index + length, WordRole::Position);
    const auto weekday =
        position ? word(index + length + position->length, WordRole::Weekday) : std::nullopt;
    if (!weekday) {
        return 0;
    }
    const bool isOther = isEvery && lengthOf(index + length, WordRole::Other) > 0;
    length += position->length + weekday->length;
    const std::size_t month = lengthOfMonth(index + length, isEvery);
    if (!isEvery || (isOther && month == 0)) {
        return 0;
    }
    recurrence.unit = QuickUnit::Month;
    recurrence.weekdays = {weekday->number};
    recurrence.position = position->number;
    return length + month;
}

/// "of the month", "of every month", "im Monat".
std::size_t QuickRecurrences::lengthOfMonth(std::size_t index, bool& isEvery) const {
    std::size_t length = std::max(lengthOf(index, WordRole::Of), lengthOf(index, WordRole::In));
    if (length == 0) {
        return 0;
    }
    const std::size_t every = lengthOf(index + length, WordRole::Every);
    length += std::max(every, lengthOf(index + length, WordRole::The));
    const auto unit = word(index + length, WordRole::Unit);
    if (!unit || unit->number != static_cast<int>(QuickUnit::Month)) {
        return 0;
    }
    isEvery = isEvery || every > 0;
    return length + unit->length;
}

/// The "2" or "other" behind "every".
std::size_t QuickRecurrences::readInterval(std::size_t index, QuickRecurrence& recurrence) const {
    if (const std::size_t other = lengthOf(index, WordRole::Other)) {
        recurrence.interval = 2;
        return other;
    }
    const auto worded = word(index, WordRole::Number);
    const auto number =
        worded || index >= m_tokens.size() ? std::nullopt : digitsOf(m_tokens[index].folded);
    recurrence.interval = worded ? worded->number : number.value_or(1);
    return worded || number ? 1 : 0;
}

std::size_t QuickRecurrences::readRecurring(std::size_t index, QuickRecurrence& recurrence) const {
    if (const auto workday = word(index, WordRole::Workday)) {
        recurrence.weekdays = {0, 1, 2, 3, 4};
        return workday->length;
    }
    const auto unit = word(index, WordRole::Unit);
    if (unit && unit->number >= static_cast<int>(QuickUnit::Day)) {
        recurrence.unit = static_cast<QuickUnit>(unit->number);
        return unit->length;
    }
    return readWeekdays(index, recurrence.weekdays);
}

/// "monday, wednesday and friday".
std::size_t QuickRecurrences::readWeekdays(std::size_t index, std::vector<int>& weekdays) const {
    std::size_t length = 0;
    constexpr int daysOfWeek = 7;
    for (int each = 0; each < daysOfWeek; ++each) {
        const std::size_t joint = length > 0 ? lengthOf(index + length, WordRole::And) : 0;
        auto day = word(index + length + joint, WordRole::Weekday);
        day = day ? day : word(index + length + joint, WordRole::DoubtfulWeekday);
        if (!day) {
            break;
        }
        if (std::find(weekdays.begin(), weekdays.end(), day->number) == weekdays.end()) {
            weekdays.push_back(day->number);
        }
        length += joint + day->length;
    }
    std::sort(weekdays.begin(), weekdays.end());
    return length;
}

std::optional<QuickRecurrence> QuickRecurrences::frequencyAt(std::size_t index) const {
    QuickRecurrence recurrence;
    if (const auto frequency = word(index, WordRole::Frequency)) {
        recurrence.unit = static_cast<QuickUnit>(frequency->number);
    } else if (word(index, WordRole::Fortnightly)) {
        recurrence.interval = 2;
    } else if (word(index, WordRole::Workdays)) {
        recurrence.weekdays = {0, 1, 2, 3, 4};
    } else {
        return std::nullopt;
    }
    return recurrence;
}

} // namespace plenzo
