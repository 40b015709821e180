#pragma once

#include "host/quick/quick_words.h"

#include <cctz/civil_time.h>

#include <optional>
#include <vector>

namespace plenzo {

/// How an entry repeats.
struct QuickRecurrence {
    QuickUnit unit = QuickUnit::Week;
    int interval = 1;
    std::vector<int> weekdays; // 0 is Monday
    int position = 0; // of the one weekday in its month: 1 is the first, -1 the last, 0 all of them
    std::optional<cctz::civil_day> until;
    std::optional<int> count;
};

/// Reads the recurrences that tokens name.
class QuickRecurrences {
public:
    explicit QuickRecurrences(const std::vector<QuickToken>& tokens) : m_tokens(tokens) {}

    /// "every 2 weeks", "every monday and friday", "first monday of every month".
    std::optional<QuickRecurrence> recurrenceAt(std::size_t index, std::size_t& length) const;

    /// "weekly": one token.
    std::optional<QuickRecurrence> frequencyAt(std::size_t index) const;

private:
    std::optional<WordMatch> word(std::size_t index, WordRole role) const {
        return wordAt(m_tokens, index, role);
    }
    std::size_t lengthOf(std::size_t index, WordRole role) const;
    std::size_t readPositioned(std::size_t index, QuickRecurrence& recurrence) const;
    std::size_t lengthOfMonth(std::size_t index, bool& isEvery) const;
    std::size_t readInterval(std::size_t index, QuickRecurrence& recurrence) const;
    std::size_t readRecurring(std::size_t index, QuickRecurrence& recurrence) const;
    std::size_t readWeekdays(std::size_t index, std::vector<int>& weekdays) const;

    const std::vector<QuickToken>& m_tokens;
};

} // namespace plenzo
