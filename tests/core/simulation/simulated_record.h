#pragma once

#include "dates/instant.h"
#include "dates/time_zone.h"
#include "propertylist/dictionary.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo::simulation {

struct Reminder {
    std::string uid;
    int type = 0;
    std::optional<Instant> absolute;
    double relativeSeconds = 0;
    std::optional<Instant> acknowledged;
};

/// An occurrence as the simulated host knows it.
struct Record {
    enum class Kind { Timed, AllDay, Floating, Undated };

    std::string uid;
    Kind kind = Kind::Timed;
    /// Of an all-day or floating one the wall clock, in UTC.
    Instant start;
    std::vector<Reminder> reminders;
};

[[nodiscard]] Dictionary dictionaryOf(const Record& record);

/// When the reminder is due for somebody in the zone; nothing when it never is.
[[nodiscard]] std::optional<Instant> dueDate(const Record& record, const Reminder& reminder,
                                             const TimeZone& zone);

} // namespace plenzo::simulation
