#pragma once

#include "host/ical/calendar.h"
#include "host/occurrences/occurrence_expansion.h"
#include "host/store/expansion_limits.h"
#include "propertylist/array.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// The records of series that may have changed, as they were and as they are, and what could not be
/// expanded.
struct RecordChanges {
    Array before;
    Array after;
    std::vector<std::string> problems;
};

/// The event dictionaries of one calendar for a window, kept up with it: only series of files that
/// have changed are expanded again. The result is always that of expanding all of them.
/// A series gives at most 10,000 occurrences; the work for one calendar is bounded, and what one
/// series costs may leave less to those after it.
class CalendarExpansion {
public:
    void update(const Calendar& calendar, const ExpansionWindow& window, RecordChanges& changes);

    /// All records, by the kinds and identifiers of their items.
    void appendTo(Array& records) const;

private:
    /// The items that share an identifier, and with it the "uid"s of their records: one series,
    /// except where two identifiers are alike.
    struct Group {
        std::vector<FiledItem> items;
        Array records;
        Array recordsBefore; // since when it was noted as stale
        ExpansionCost cost;
        bool isNoted = false;
        bool isStale = false;
    };
    using Groups = std::map<std::pair<ItemKind, std::string>, Group>;

    void takeFiles(const std::vector<CalendarFilePointer>& files);
    void addItems(const CalendarFile& file);
    void removeItems(const CalendarFile& file);
    void takeAppearance(const Calendar& calendar, const ExpansionWindow& window);
    void note(Groups::iterator group);
    void makeStale(Groups::iterator group);

    [[nodiscard]] ExpansionBudget unused() const;
    bool expandAlone();
    void expandInOrder();
    void expand(Group& group, const ExpansionBudget& left);
    ExpansionBudget expand(const Series& series, Group& group, const ExpansionBudget& left);
    void tellChanges(RecordChanges& changes);

    Calendar m_calendar;
    std::optional<ExpansionWindow> m_window;
    Groups m_groups;
    std::vector<Groups::iterator> m_noted;
    std::size_t m_itemCount = 0;
    ExpansionBudget m_used;                           // by the groups that are not stale
    bool m_isAmple = true;                            // the last time, for every group
    std::set<std::pair<int, std::string>> m_problems; // by their lines, each once
};

} // namespace plenzo
