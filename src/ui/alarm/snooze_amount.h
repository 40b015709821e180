#pragma once

#include <cstdint>

namespace plenzo {

/// What a snooze amount counts; the values are the tags of the pop-up's items.
enum class SnoozeUnits : std::int64_t {
    Minutes = 0,
    Hours = 1,
    Days = 2,
    MinutesBeforeStart = 3,
};

inline constexpr std::int64_t snoozeUnitsCount = 4;

/// So many minutes, hours or days from now, or minutes before an event's start.
struct SnoozeAmount {
    std::int64_t value = 0;
    SnoozeUnits units = SnoozeUnits::Minutes;

    /// Signed: negative before the event's start. Amounts beyond a million days count as that.
    [[nodiscard]] double offsetSeconds() const;

    friend bool operator==(const SnoozeAmount&, const SnoozeAmount&) = default;
};

/// The seconds of the settings in the largest unit that divides them, else in whole minutes; 0 or
/// less is that long before the start.
[[nodiscard]] SnoozeAmount snoozeAmountFromSeconds(std::int64_t amountSeconds);

/// What the amount is when a digit is typed behind it. Stays as it is when it would grow beyond
/// nine digits.
[[nodiscard]] std::int64_t withDigit(std::int64_t value, int digit);

} // namespace plenzo
