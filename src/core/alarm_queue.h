#pragma once

#include "model/alarm.h"
#include "model/title_order.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace plenzo {

/// The pending alarms, in the order of compareFireDate once they are sorted: the first is the next
/// to fire.
class AlarmQueue {
public:
    explicit AlarmQueue(const TitleOrder& titles) : m_titles(titles) {}

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] bool empty() const { return m_entries.empty(); }
    /// In queue order.
    [[nodiscard]] const Alarm& operator[](std::size_t index) const {
        return *m_entries[index].alarm;
    }

    /// Adds an alarm at the end, where it stays until sort().
    void append(Alarm alarm);
    /// Brings the appended alarms to their places. Equal ones keep the order in which they came.
    void sort();
    void clear();
    /// Removes the alarms of these records.
    void removeAlarmsOf(const std::vector<EventDict>& eventDicts);
    /// Takes out and gives the alarms whose fire date is at `now` or before it, in queue order.
    [[nodiscard]] std::vector<Alarm> takeDueAlarms(Instant now);

private:
    /// What sorting and searching look at first lies here, so that most of the time they need not
    /// follow the pointer.
    struct Entry {
        Instant fireDate;
        const Dictionary* eventDict;
        std::unique_ptr<Alarm> alarm;
    };

    [[nodiscard]] bool isBefore(const Entry& left, const Entry& right) const;
    void sortTies(std::vector<Entry>::iterator begin);
    void sortOneMoment(std::span<Entry> entries) const;

    const TitleOrder& m_titles;
    std::vector<Entry> m_entries;
    /// The entries before this one are in order.
    std::size_t m_sortedCount = 0;
};

} // namespace plenzo
