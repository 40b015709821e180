#pragma once

#include "host/quick/quick_dates.h"

namespace plenzo {

/// A time of day as it was written.
struct QuickClock {
    int hour = 0; // to 24
    int minute = 0;
    bool isExact = false;  // by its own words in the morning or the afternoon
    bool isMarked = false; // clearly a time: with minutes, "am", "o'clock"
    bool isHourAlone = false;
    std::optional<int> meridiem;
    std::size_t length = 0; // in tokens
};

/// A time, or a span of them, that some tokens name.
struct QuickTimes {
    QuickClock from;
    std::optional<QuickClock> to;
    std::optional<HalfOfDay> half;
    std::size_t length = 0;
};

/// Reads the times of day that tokens name. A number alone is one after "at" or "from", or as one
/// of two after a date.
class QuickTimesReader {
public:
    QuickTimesReader(const std::vector<QuickToken>& tokens, const QuickDates& dates)
        : m_tokens(tokens), m_dates(dates) {}

    std::optional<QuickTimes> timesAt(std::size_t index, bool followsDate) const;

private:
    std::optional<WordMatch> word(std::size_t index, WordRole role) const {
        return wordAt(m_tokens, index, role);
    }
    std::size_t lengthOf(std::size_t index, WordRole role) const;
    std::optional<QuickClock> clockAt(std::size_t index, bool isIntroduced) const;
    std::optional<QuickClock> namedClockAt(std::size_t index, bool isIntroduced) const;
    bool readMeridiem(std::size_t index, QuickClock& clock) const;
    void readEnd(std::size_t index, QuickTimes& times) const;
    void readHalf(std::size_t index, QuickTimes& times) const;

    const std::vector<QuickToken>& m_tokens;
    const QuickDates& m_dates;
};

} // namespace plenzo
