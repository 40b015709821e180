#include "host/store/agent_events.h"

#include <algorithm>
#include <unordered_set>

namespace plenzo {

RecordChanges AgentEvents::update(const CalendarSet& set, const ExpansionWindow& window) {
    RecordChanges changes;
    std::unordered_set<std::string> present;
    m_uids.clear();
    for (const Calendar& calendar : set.calendars) {
        m_expansions[calendar.uid].update(calendar, window, changes);
        m_uids.push_back(calendar.uid);
        present.insert(calendar.uid);
    }
    std::erase_if(m_expansions, [&](auto& expansion) {
        const bool isGone = !present.contains(expansion.first);
        if (isGone) {
            expansion.second.appendTo(changes.before);
        }
        return isGone;
    });
    return changes;
}

Array AgentEvents::all() const {
    Array records;
    for (const std::string& uid : m_uids) {
        m_expansions.at(uid).appendTo(records);
    }
    return records;
}

} // namespace plenzo
