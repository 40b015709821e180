#include "host/store/agent_events.h"

#include "host/store/shared_work.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <unordered_set>

namespace plenzo {

namespace {

void appendTo(Array& all, const Array& records) {
    for (const Value& record : records) {
        all.append(record);
    }
}

RecordChanges joined(const std::vector<RecordChanges>& parts) {
    RecordChanges all;
    for (const RecordChanges& part : parts) {
        appendTo(all.before, part.before);
        appendTo(all.after, part.after);
        all.problems.insert(all.problems.end(), part.problems.begin(), part.problems.end());
    }
    return all;
}

} // namespace

RecordChanges AgentEvents::update(const CalendarSet& set, const ExpansionWindow& window) {
    RecordChanges changes = updateAll(set.calendars, window);
    m_uids.clear();
    std::unordered_set<std::string> present;
    for (const Calendar& calendar : set.calendars) {
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

/// None depends on the others. When another day begins each of them has much to do; else most have
/// nothing, and threads would not pay.
RecordChanges AgentEvents::updateAll(const std::vector<Calendar>& calendars,
                                     const ExpansionWindow& window) {
    std::vector<CalendarExpansion*> expansions;
    expansions.reserve(calendars.size());
    for (const Calendar& calendar : calendars) {
        expansions.push_back(&m_expansions[calendar.uid]);
    }
    std::vector<RecordChanges> changes(calendars.size());
    const bool haveMuchToDo = !m_window || !areSameDays(*m_window, window);
    m_window = window;
    SharedWork work(calendars.size());
    work.run(haveMuchToDo ? 2 : std::numeric_limits<std::size_t>::max(), [&] {
        while (const auto index = work.take()) {
            expansions[*index]->update(calendars[*index], window, changes[*index]);
        }
    });
    return joined(changes);
}

Array AgentEvents::all() const {
    Array records;
    for (const std::string& uid : m_uids) {
        m_expansions.at(uid).appendTo(records);
    }
    return records;
}

} // namespace plenzo
