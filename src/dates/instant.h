#pragma once

#include "propertylist/value_type.h"

#include <compare>
#include <limits>
#include <optional>

namespace plenzo {

/// A point in absolute time: seconds since the reference date, 2001-01-01 00:00:00 UTC. It carries
/// whatever number a record held, so it may be infinite or NaN; isReadable() tells whether it has
/// calendar fields. All instants are ordered: NaN equals itself and comes before everything else.
class Instant {
public:
    /// The reference date.
    constexpr Instant() = default;
    constexpr explicit Instant(double secondsSinceReferenceDate)
        : m_secondsSinceReferenceDate(secondsSinceReferenceDate) {}
    constexpr explicit Instant(Date date)
        : m_secondsSinceReferenceDate(date.secondsSinceReferenceDate) {}
    [[nodiscard]] static constexpr Instant since1970(double seconds) {
        return Instant(seconds - referenceDateSince1970Seconds);
    }
    /// Later than every readable instant; not finite.
    [[nodiscard]] static constexpr Instant distantFuture() {
        return Instant(std::numeric_limits<double>::infinity());
    }

    [[nodiscard]] constexpr double secondsSinceReferenceDate() const {
        return m_secondsSinceReferenceDate;
    }
    [[nodiscard]] constexpr double secondsSince1970() const {
        return m_secondsSinceReferenceDate + referenceDateSince1970Seconds;
    }
    [[nodiscard]] constexpr Date date() const { return {m_secondsSinceReferenceDate}; }
    /// Neither infinite nor NaN.
    [[nodiscard]] constexpr bool isFinite() const {
        return m_secondsSinceReferenceDate - m_secondsSinceReferenceDate == 0;
    }
    /// Within the range whose calendar fields can be read, about 317,000 years either way.
    [[nodiscard]] constexpr bool isReadable() const {
        return m_secondsSinceReferenceDate >= -furthestReadableSeconds &&
               m_secondsSinceReferenceDate <= furthestReadableSeconds;
    }

    friend constexpr Instant operator+(Instant instant, double seconds) {
        return Instant(instant.m_secondsSinceReferenceDate + seconds);
    }
    friend constexpr Instant operator-(Instant instant, double seconds) {
        return Instant(instant.m_secondsSinceReferenceDate - seconds);
    }
    /// In seconds, positive when the left one is later.
    friend constexpr double operator-(Instant left, Instant right) {
        return left.m_secondsSinceReferenceDate - right.m_secondsSinceReferenceDate;
    }
    friend constexpr std::weak_ordering operator<=>(Instant left, Instant right) {
        if (left.isNaN() || right.isNaN()) {
            return right.isNaN() <=> left.isNaN();
        }
        const double a = left.m_secondsSinceReferenceDate;
        const double b = right.m_secondsSinceReferenceDate;
        return a < b   ? std::weak_ordering::less
               : a > b ? std::weak_ordering::greater
                       : std::weak_ordering::equivalent;
    }
    friend constexpr bool operator==(Instant left, Instant right) {
        return std::is_eq(left <=> right);
    }

    static constexpr double referenceDateSince1970Seconds = 978307200;
    /// Instants further than this from the reference date are not readable.
    static constexpr double furthestReadableSeconds = 1e13;

private:
    [[nodiscard]] constexpr bool isNaN() const {
        return m_secondsSinceReferenceDate != m_secondsSinceReferenceDate;
    }

    double m_secondsSinceReferenceDate = 0;
};

/// Strictly later; false when there is no date to compare.
[[nodiscard]] bool isNewerThan(std::optional<Instant> date, std::optional<Instant> other);

/// Later or equal; false when there is no date to compare.
[[nodiscard]] bool isNewerOrEqualTo(std::optional<Instant> date, std::optional<Instant> other);

/// The instant without its fraction of a second, which is cut off toward the reference date.
[[nodiscard]] Instant truncatedDate(Instant date);

/// Days since noon of 1 January 4713 BC (Julian calendar), in UTC.
[[nodiscard]] double julianDate(Instant date);
[[nodiscard]] Instant dateFromJulianDate(double julianDays);

} // namespace plenzo
