#pragma once

#include "dates/instant.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

struct ZoneRules;

/// A named time zone with the rules of the system's zone data; a pointer's worth to copy. The
/// rules of a zone are read once and kept for the life of the program. Zones are looked up on one
/// thread only. A moment that is not readable counts as the nearest one that is, and NaN as the
/// reference date.
class TimeZone {
public:
    /// Universal.
    TimeZone();

    /// The zones named "Universal" and "GMT". Neither needs zone data.
    [[nodiscard]] static TimeZone universal();
    [[nodiscard]] static TimeZone gmt();

    /// A zone by its name in the zone data, such as "Europe/Berlin". "Universal", "UTC" and "GMT"
    /// are there without zone data and are found regardless of case. Nothing for an unknown name
    /// and for one that cannot be a zone's.
    [[nodiscard]] static std::optional<TimeZone> named(std::string_view name);

    [[nodiscard]] const std::string& name() const;

    /// Named "Universal" or "UTC" regardless of case, or equal to gmt().
    [[nodiscard]] bool isUniversal() const;

    /// The same offset from GMT on that date.
    [[nodiscard]] bool isEquivalentTo(const TimeZone& other, Instant onDate) const;

    /// Seconds east of GMT.
    [[nodiscard]] std::int64_t offsetSeconds(Instant date) const;

    /// As in the zone data, such as "CET", "BST" or "+0330".
    [[nodiscard]] std::string abbreviation(Instant date) const;

    [[nodiscard]] const ZoneRules& rules() const { return *m_rules; }

    /// Of one name, to the letter.
    friend bool operator==(const TimeZone&, const TimeZone&) = default;

private:
    explicit TimeZone(const ZoneRules& rules) : m_rules(&rules) {}

    const ZoneRules* m_rules;
};

} // namespace plenzo
