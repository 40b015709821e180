#include "host/records/repeat_text.h"

#include "host/ical/recurrence_rule.h"
#include "host/ical/step_parts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace plenzo {

namespace {

constexpr std::array<std::string_view, 7> unitNames = {"second", "minute", "hour", "day",
                                                       "week",   "month",  "year"};
constexpr std::array<std::string_view, 8> weekdayNames = {
    "", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> monthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 6> positionNames = {"",      "first",  "second",
                                                           "third", "fourth", "fifth"};

std::string joined(const std::vector<std::string>& words, std::string_view last) {
    std::string text;
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (index > 0) {
            text += index + 1 == words.size() ? last : ", ";
        }
        text += words[index];
    }
    return text;
}

std::string positionText(int position) {
    if (position == -1) {
        return "last";
    }
    const auto number = static_cast<std::size_t>(std::abs(position));
    const std::string name = number < positionNames.size() ? std::string(positionNames[number])
                                                           : "number " + std::to_string(number);
    return position < 0 ? name + " to last" : name;
}

std::string weekdayText(short day) {
    const auto weekday = static_cast<std::size_t>(icalrecurrencetype_day_day_of_week(day));
    const int position = icalrecurrencetype_day_position(day);
    const std::string name(weekday < weekdayNames.size() ? weekdayNames[weekday] : "");
    return position == 0 ? name : "the " + positionText(position) + " " + name;
}

std::string monthDayText(short day) {
    return day > 0 ? "day " + std::to_string(day) : "the " + positionText(day) + " day";
}

std::string monthText(short month) {
    const int number = icalrecurrencetype_month_month(month);
    const bool isKnown = number >= 1 && number <= 12;
    return isKnown ? std::string(monthNames[static_cast<std::size_t>(number - 1)])
                   : "month " + std::to_string(number);
}

/// "PREFIX A, B and C" for the numbers of a BY part, or nothing for none.
template <std::size_t size, typename Text>
std::string listText(std::string_view prefix, const short (&part)[size], Text text,
                     std::string_view last = " and ") {
    std::vector<std::string> words;
    for (const int number : numbersOf(part)) {
        words.push_back(text(static_cast<short>(number)));
    }
    return words.empty() ? std::string() : std::string(prefix) + joined(words, last);
}

bool isEveryWorkday(const icalrecurrencetype& parts) {
    std::vector<int> days = numbersOf(parts.by_day);
    std::sort(days.begin(), days.end());
    return days == std::vector<int>{ICAL_MONDAY_WEEKDAY, ICAL_TUESDAY_WEEKDAY,
                                    ICAL_WEDNESDAY_WEEKDAY, ICAL_THURSDAY_WEEKDAY,
                                    ICAL_FRIDAY_WEEKDAY};
}

/// "the last weekday": what BYSETPOS chooses among the days.
std::string chosenDayText(const icalrecurrencetype& parts) {
    std::vector<std::string> positions;
    for (const int position : numbersOf(parts.by_set_pos)) {
        positions.push_back(positionText(position));
    }
    const std::string days =
        isEveryWorkday(parts) ? " weekday" : listText(" ", parts.by_day, weekdayText, " or ");
    return " on the " + joined(positions, " and ") + days;
}

std::string dayText(const icalrecurrencetype& parts) {
    const bool hasDays = parts.by_day[0] != ICAL_RECURRENCE_ARRAY_MAX;
    if (hasDays && parts.by_set_pos[0] != ICAL_RECURRENCE_ARRAY_MAX) {
        return chosenDayText(parts);
    }
    return isEveryWorkday(parts) ? " on weekdays" : listText(" on ", parts.by_day, weekdayText);
}

std::string frequencyText(const icalrecurrencetype& parts) {
    const std::string unit(unitNames[static_cast<std::size_t>(parts.freq)]);
    return parts.interval <= 1 ? "every " + unit
                               : "every " + std::to_string(parts.interval) + " " + unit + "s";
}

std::string endText(const icalrecurrencetype& parts) {
    if (parts.count > 0) {
        return parts.count == 1 ? ", once" : ", " + std::to_string(parts.count) + " times";
    }
    const icaltimetype& until = parts.until;
    if (icaltime_is_null_time(until) != 0 || until.month < 1 || until.month > 12) {
        return {};
    }
    return ", until " + std::to_string(until.day) + " " +
           monthText(static_cast<short>(until.month)) + " " + std::to_string(until.year);
}

std::string ruleText(const icalrecurrencetype& parts) {
    return frequencyText(parts) + dayText(parts) +
           listText(" on ", parts.by_month_day, monthDayText) +
           listText(" in ", parts.by_month, monthText) + endText(parts);
}

} // namespace

std::string repeatText(const std::vector<std::string>& rules) {
    std::vector<std::string> texts;
    for (const std::string& text : rules) {
        if (const auto rule = RecurrenceRule::fromText(text)) {
            texts.push_back(ruleText(rule->parts()));
        }
    }
    return joined(texts, " and ");
}

} // namespace plenzo
