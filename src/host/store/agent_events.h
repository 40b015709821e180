#pragma once

#include "host/occurrences/occurrence_expansion.h"
#include "host/store/calendar_expansion.h"
#include "host/store/calendar_set.h"
#include "propertylist/array.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace plenzo {

/// The event dictionaries of all calendars, kept up with them.
class AgentEvents {
public:
    /// Brings the records up to date. What may have changed, whole series at a time.
    RecordChanges update(const CalendarSet& set, const ExpansionWindow& window);

    /// All of them, by their calendars.
    Array all() const;

private:
    RecordChanges updateAll(const std::vector<Calendar>& calendars, const ExpansionWindow& window);

    std::unordered_map<std::string, CalendarExpansion> m_expansions; // by the calendars' uids
    std::vector<std::string> m_uids;                                 // in the order of the set
    std::optional<ExpansionWindow> m_window;
};

} // namespace plenzo
