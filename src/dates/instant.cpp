#include "dates/instant.h"

#include <cmath>

namespace plenzo {

namespace {

constexpr double secondsPerDay = 86400;
constexpr double julianDateOf1970 = 2440587.5;

} // namespace

bool isNewerThan(std::optional<Instant> date, std::optional<Instant> other) {
    return date && other && *date > *other;
}

bool isNewerOrEqualTo(std::optional<Instant> date, std::optional<Instant> other) {
    return date && other && *date >= *other;
}

Instant truncatedDate(Instant date) {
    return Instant(std::trunc(date.secondsSinceReferenceDate()));
}

double julianDate(Instant date) {
    return date.secondsSince1970() / secondsPerDay + julianDateOf1970;
}

Instant dateFromJulianDate(double julianDays) {
    return Instant::since1970((julianDays - julianDateOf1970) * secondsPerDay);
}

} // namespace plenzo
