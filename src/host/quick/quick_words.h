#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// What a word of a quick entry can stand for. The number of the table's row says which: a weekday
/// from 0 for Monday, a month from 1, a unit, a count.
enum class WordRole : std::uint8_t {
    ToDo,
    ToDoBeforeColon,
    Number,
    Unit,
    Meridiem, // 0 is the morning, 12 the afternoon
    OrdinalEnding,
    ClockWord,
    Month,
    Weekday,
    DoubtfulWeekday, // also another word ("sun", "sat", "wed")
    NamedDay,        // in days from today
    Weekend,
    Tonight,
    NamedTime, // the hour
    DayPart,   // its usual hour
    MorningHint,
    EveningHint,
    On,
    The,
    Of,
    Next,
    This,
    At,
    In,
    During, // in or at, before a part of the day
    From,
    To,
    Until,
    For,
    With,
    Every,
    Other,
    Position, // in a month: 1 is the first, -1 the last
    Times,
    And,
    Frequency, // a unit: daily, weekly, monthly, yearly
    Fortnightly,
    Workdays,
    Workday,
    Place,
    NightOfName, // in "Monday Night Football"
    NoDate,      // looks like a date and is none
};

enum class QuickUnit : std::uint8_t { Minute, Hour, Day, Week, Month, Year };

/// A word of the text: letters in their folded case, without the punctuation around it.
struct QuickToken {
    std::string folded;
    std::uint64_t roles = 0; // of the table's rows that begin with it, a bit each
    std::size_t chunk = 0;   // the run of text between white space that it is part of
    bool isCapitalized = false;
    bool hasColon = false; // right after it
    bool hasPeriod = false;
};

/// A row of the table that stands at some token, and how many tokens it covers.
struct WordMatch {
    int number = 0;
    std::size_t length = 0;
};

/// The longest row with that role that stands at `index`. All languages count at once.
std::optional<WordMatch> wordAt(const std::vector<QuickToken>& tokens, std::size_t index,
                                WordRole role);

/// What `QuickToken::roles` is for that word.
std::uint64_t rolesOf(std::string_view folded);

/// Whether that folded word alone can have the role.
bool isWord(std::string_view folded, WordRole role);

} // namespace plenzo
