#pragma once

#include "host/edits/edit_targets.h"
#include "host/store/calendar_set.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// The way back from the identifiers that the agent was told to what they stand for. It asks the
/// calendars themselves, so that identifiers from before a restart, or of days that the records no
/// longer reach, mean what they meant. The set outlives it.
class CommandTargets {
public:
    explicit CommandTargets(const CalendarSet& set) : m_set(set) {}

    /// What an event dictionary's "uid" stands for; nothing for an unknown one.
    std::optional<OccurrenceTarget> occurrence(std::string_view eventUid) const;

    /// What a reminder entry's "uid" stands for; nothing for an unknown one.
    std::optional<AlarmTarget> alarm(std::string_view reminderUid) const;

    /// The calendar that an event's or a reminder's "uid" names, or null.
    const Calendar* calendar(std::string_view uid) const;

private:
    const CalendarSet& m_set;
};

} // namespace plenzo
