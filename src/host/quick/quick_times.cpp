#include "host/quick/quick_times.h"

#include "host/quick/quick_tokens.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr int noon = 12;
constexpr int hoursOfDay = 24;
constexpr int minutesOfHour = 60;

/// "9", "9:15", "9.15".
std::optional<QuickClock> writtenClock(std::string_view text) {
    const std::size_t separator = text.find_first_of(":.");
    const std::string_view hourText = text.substr(0, separator);
    const auto hour = hourText.size() <= 2 ? digitsOf(hourText) : std::nullopt;
    if (!hour || *hour > hoursOfDay) {
        return std::nullopt;
    }
    QuickClock clock;
    clock.hour = *hour;
    clock.length = 1;
    if (separator == std::string_view::npos) {
        clock.isHourAlone = true;
        clock.isExact = *hour > noon || hourText.front() == '0';
        return clock;
    }
    const std::string_view minuteText = text.substr(separator + 1);
    const auto minute = minuteText.size() == 2 ? digitsOf(minuteText) : std::nullopt;
    if (!minute || *minute >= minutesOfHour || (*hour == hoursOfDay && *minute > 0)) {
        return std::nullopt;
    }
    clock.minute = *minute;
    clock.isMarked = text[separator] == ':';
    clock.isExact = *hour >= noon || hourText.front() == '0';
    return clock;
}

void setMeridiem(QuickClock& clock, int meridiem) {
    clock.meridiem = meridiem;
    clock.hour = clock.hour % noon + meridiem;
    clock.isExact = true;
}

/// "10-11am" is in the morning, "11-1pm" begins there.
void inheritMeridiem(QuickClock& from, const QuickClock& to) {
    if (!to.meridiem || from.meridiem || from.hour > noon || from.hour == 0) {
        return;
    }
    const int sameHalf = from.hour % noon + *to.meridiem;
    const bool isBefore =
        sameHalf * minutesOfHour + from.minute < to.hour * minutesOfHour + to.minute;
    setMeridiem(from, isBefore ? *to.meridiem : noon - *to.meridiem);
}

} // namespace

std::size_t QuickTimesReader::lengthOf(std::size_t index, WordRole role) const {
    const auto found = word(index, role);
    return found ? found->length : 0;
}

std::optional<QuickTimes> QuickTimesReader::timesAt(std::size_t index, bool followsDate) const {
    const std::size_t introduction =
        std::max(lengthOf(index, WordRole::At), lengthOf(index, WordRole::From));
    const auto from = clockAt(index + introduction, introduction > 0);
    if (!from) {
        return std::nullopt;
    }
    QuickTimes times;
    times.from = *from;
    times.length = introduction + from->length;
    readEnd(index, times);
    const bool isSpan = times.to && (times.to->isMarked || followsDate);
    if (introduction == 0 && !from->isMarked && !isSpan) {
        return std::nullopt;
    }
    readHalf(index + times.length, times);
    return times;
}

void QuickTimesReader::readEnd(std::size_t index, QuickTimes& times) const {
    const std::size_t next = index + times.length;
    const std::size_t joint =
        std::max(lengthOf(next, WordRole::To), lengthOf(next, WordRole::Until));
    const auto to = joint > 0 ? clockAt(next + joint, true) : std::nullopt;
    if (to) {
        inheritMeridiem(times.from, *to);
        times.to = to;
        times.length += joint + to->length;
    }
}

/// "at 7 in the morning", "um 7 abends".
void QuickTimesReader::readHalf(std::size_t index, QuickTimes& times) const {
    auto part = m_dates.dayPartAt(index);
    part = part ? part : word(index, WordRole::DayPart);
    const bool isDay = part && m_dates.dayAt(index); // "um 9 morgen" is tomorrow
    if (part && !isDay) {
        times.half = part->number < noon ? HalfOfDay::Morning : HalfOfDay::Evening;
        times.length += part->length;
    }
}

std::optional<QuickClock> QuickTimesReader::clockAt(std::size_t index, bool isIntroduced) const {
    if (index >= m_tokens.size()) {
        return std::nullopt;
    }
    if (const auto named = namedClockAt(index, isIntroduced)) {
        return named;
    }
    auto clock = writtenClock(m_tokens[index].folded);
    if (!clock) {
        return std::nullopt;
    }
    if (const std::size_t clockWord = lengthOf(index + 1, WordRole::ClockWord)) {
        clock->length += clockWord;
        clock->isMarked = true;
    }
    if (!readMeridiem(index + clock->length, *clock)) {
        return std::nullopt;
    }
    const bool isDay = !clock->isMarked && m_dates.dayAt(index);
    return isDay ? std::nullopt : clock;
}

std::optional<QuickClock> QuickTimesReader::namedClockAt(std::size_t index,
                                                         bool isIntroduced) const {
    const auto named = word(index, WordRole::NamedTime);
    if (!named || (m_tokens[index].isCapitalized && !isIntroduced)) {
        return std::nullopt;
    }
    QuickClock clock;
    clock.hour = named->number;
    clock.isExact = true;
    clock.isMarked = true;
    clock.length = named->length;
    return clock;
}

/// False for an hour that no half of a day has.
bool QuickTimesReader::readMeridiem(std::size_t index, QuickClock& clock) const {
    const auto meridiem = word(index, WordRole::Meridiem);
    const bool isPreposition = meridiem && m_dates.dayAt(index); // "um 9 am Montag"
    if (!meridiem || isPreposition) {
        return true;
    }
    if (clock.hour < 1 || clock.hour > noon) {
        return false;
    }
    setMeridiem(clock, meridiem->number);
    clock.isMarked = true;
    clock.length += meridiem->length;
    return true;
}

} // namespace plenzo
