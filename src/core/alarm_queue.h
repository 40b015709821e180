#pragma once

#include "model/alarm.h"
#include "model/title_order.h"

#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace plenzo {

/// The pending alarms. Once sorted, the first is the next to fire.
class AlarmQueue {
public:
    explicit AlarmQueue(const TitleOrder& titles) : m_titles(titles) {}

    /// In queue order, provided sort() came after the last append().
    [[nodiscard]] std::span<const Alarm> alarms() const { return m_alarms; }

    void append(std::vector<Alarm> alarms);
    void sort();
    void clear() { m_alarms.clear(); }
    /// Removes the alarms of the occurrences with these "uid"s.
    void removeAlarmsWithUIDs(const std::unordered_set<std::string_view>& uids);
    /// Takes out and gives the alarms whose fire date is at `now` or before it, in queue order.
    [[nodiscard]] std::vector<Alarm> takeDueAlarms(Instant now);

private:
    const TitleOrder& m_titles;
    std::vector<Alarm> m_alarms;
};

} // namespace plenzo
