#pragma once

#include "host/ical/calendar_item.h"

#include <functional>
#include <optional>
#include <string>

namespace plenzo {

/// One occurrence of an item in a calendar file.
struct OccurrenceTarget {
    std::string path;
    ItemKind kind = ItemKind::Event;
    std::string itemUid;
    int line = 0;                         // of an item without a UID: where it begins
    std::optional<CalendarTime> identity; // its start by the series; nothing for an undated to-do
};

/// One alarm of an occurrence.
struct AlarmTarget {
    OccurrenceTarget occurrence;
    std::string alarmUid; // as AlarmDefinition has it
    int repetition = 0;
};

/// What an edit knows of the world.
struct EditContext {
    SystemSeconds now;
    CalendarZone systemZone;
    std::function<std::string()> newUid;
    /// For a text that no file gets: what is damaged elsewhere in it does not matter.
    bool toleratesDamage = false;
};

/// The text after an edit, or why there is none: then the same edit of the same text never
/// succeeds.
struct EditResult {
    std::string text;
    std::string error; // empty when it was done

    static EditResult failed(std::string why) { return {{}, std::move(why)}; }
};

} // namespace plenzo
