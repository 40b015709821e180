#pragma once

#include <cctz/civil_time.h>
#include <cctz/time_zone.h>

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace plenzo {

/// An instant in whole seconds.
using SystemSeconds = cctz::time_point<cctz::seconds>;

std::int64_t unixSecondsOf(SystemSeconds instant);
SystemSeconds instantFromUnixSeconds(std::int64_t unixSeconds);

/// A zone that a calendar file defines itself: its changes of offset, in time order.
struct EmbeddedZone {
    struct Change {
        std::int64_t atUnixSeconds = 0;
        std::int64_t offsetSeconds = 0;
    };
    std::int64_t firstOffsetSeconds = 0;
    std::vector<Change> changes;
};

/// The zone of a calendar's times: one of the system's database or one that the file defines. Cheap
/// to copy.
class CalendarZone {
public:
    /// UTC.
    CalendarZone();
    explicit CalendarZone(cctz::time_zone zone);
    explicit CalendarZone(std::shared_ptr<const EmbeddedZone> zone);

    /// The instant of a local time by RFC 5545, 3.3.5: a local time that is skipped counts with the
    /// offset before the gap (so it moves forward), a repeated one is the first of the two.
    SystemSeconds instantOf(const cctz::civil_second& local) const;
    cctz::civil_second localOf(SystemSeconds instant) const;

private:
    std::variant<cctz::time_zone, std::shared_ptr<const EmbeddedZone>> m_zone;
};

} // namespace plenzo
