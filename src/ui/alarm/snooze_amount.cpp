#include "ui/alarm/snooze_amount.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace plenzo {

namespace {

/// By units.
constexpr std::array<std::int64_t, snoozeUnitsCount> secondsPerUnit{60, 3600, 86400, -60};

constexpr std::int64_t greatestValue = 999'999'999;
constexpr double greatestOffsetSeconds = 1e6 * 86400.0;

constexpr std::int64_t seconds(SnoozeUnits units) {
    return secondsPerUnit.at(static_cast<std::size_t>(units));
}

} // namespace

double SnoozeAmount::offsetSeconds() const {
    const double offset = static_cast<double>(value) * static_cast<double>(seconds(units));
    return std::clamp(offset, -greatestOffsetSeconds, greatestOffsetSeconds);
}

SnoozeAmount snoozeAmountFromSeconds(std::int64_t amountSeconds) {
    if (amountSeconds <= 0) {
        return {.value = amountSeconds / seconds(SnoozeUnits::MinutesBeforeStart),
                .units = SnoozeUnits::MinutesBeforeStart};
    }
    for (const SnoozeUnits units : {SnoozeUnits::Days, SnoozeUnits::Hours, SnoozeUnits::Minutes}) {
        if (amountSeconds >= seconds(units) && amountSeconds % seconds(units) == 0) {
            return {.value = amountSeconds / seconds(units), .units = units};
        }
    }
    return {.value = amountSeconds / seconds(SnoozeUnits::Minutes), .units = SnoozeUnits::Minutes};
}

std::int64_t withDigit(std::int64_t value, int digit) {
    return value <= (greatestValue - digit) / 10 ? value * 10 + digit : value;
}

} // namespace plenzo
