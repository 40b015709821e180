#pragma once

#include "host/quick/quick_entry.h"
#include "host/quick/quick_words.h"

#include <cctz/civil_time.h>

#include <optional>
#include <vector>

namespace plenzo {

enum class HalfOfDay : std::uint8_t { Morning, Evening };

/// A day, or days from the first to the last, that some tokens name.
struct QuickDay {
    cctz::civil_day first;
    cctz::civil_day last;
    std::optional<int> hour;   // of a part of the day: "tonight", "monday morning"
    bool movesByWeeks = false; // a weekday alone: when it is over today, it is the next one
    std::size_t length = 0;    // in tokens
};

/// Reads the days that tokens name, as of one today.
class QuickDates {
public:
    QuickDates(const std::vector<QuickToken>& tokens, cctz::civil_day today, DayMonthOrder order)
        : m_tokens(tokens), m_today(today), m_order(order) {}

    /// The day or the range of days that begins at this token, with the words that introduce it.
    std::optional<QuickDay> rangeAt(std::size_t index) const;

    /// One day that begins at this token.
    std::optional<QuickDay> dayAt(std::size_t index) const;

    /// The hour of "in the morning", "at night".
    std::optional<WordMatch> dayPartAt(std::size_t index) const;

    /// "2 weeks", "an hour": the count, with the unit in `unit`.
    std::optional<WordMatch> amountAt(std::size_t index, QuickUnit& unit) const;

private:
    using Found = std::optional<QuickDay>;

    std::optional<WordMatch> word(std::size_t index, WordRole role) const {
        return wordAt(m_tokens, index, role);
    }
    std::optional<int> numberAt(std::size_t index) const;
    std::size_t lengthOf(std::size_t index, WordRole role) const;

    Found plainDayAt(std::size_t index, bool isIntroduced) const;
    Found wordedDayAt(std::size_t index) const;
    Found nextAt(std::size_t index) const;
    Found thisAt(std::size_t index) const;
    Found weekdayAt(std::size_t index, bool isIntroduced) const;
    Found numericDayAt(std::size_t index, bool isIntroduced) const;
    Found writtenDate(std::string_view text, char separator, DayMonthOrder order) const;
    Found monthDayAt(std::size_t index) const;
    Found dayMonthAt(std::size_t index) const;
    Found ordinalDayAt(std::size_t index) const;
    Found distantDayAt(std::size_t index) const;
    Found numberRangeAt(std::size_t index) const;
    Found withYear(int month, int day, std::size_t index, std::size_t lengthBefore) const;
    Found weekend(cctz::civil_day from, std::size_t length) const;
    bool isName(std::size_t index) const;

    Found oneDay(const std::optional<cctz::civil_day>& day, std::size_t length) const;
    std::optional<cctz::civil_day> coming(int month, int day) const;

    const std::vector<QuickToken>& m_tokens;
    cctz::civil_day m_today;
    DayMonthOrder m_order;
};

/// A day of the calendar in the years 1 to 9998, or nothing.
std::optional<cctz::civil_day> existingDay(int year, int month, int day);

/// `day` moved by days, weeks, months or years, the last day of a shorter month where the day is
/// missing; nothing outside of the years 1 to 9998.
std::optional<cctz::civil_day> movedDay(cctz::civil_day day, int count, QuickUnit unit);

/// The first day from `from` on with that weekday, 0 being Monday.
cctz::civil_day firstWeekdayFrom(cctz::civil_day from, int weekday);

/// 0 for Monday.
int weekdayOf(cctz::civil_day day);

} // namespace plenzo
