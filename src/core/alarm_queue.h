#pragma once

#include "model/alarm.h"
#include "model/alarm_computation.h"
#include "model/alarm_order.h"
#include "model/title_order.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace plenzo {

/// The pending alarms, in the order of compareFireDate once they are sorted: the first is the next
/// to fire. Holds fewer than 2^32 of them.
class AlarmQueue {
public:
    explicit AlarmQueue(const TitleOrder& titles) : m_titles(titles) {}

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] bool empty() const { return m_entries.empty(); }
    /// In queue order, made anew.
    [[nodiscard]] Alarm operator[](std::size_t index) const;
    [[nodiscard]] Instant fireDate(std::size_t index) const {
        return Instant(m_entries[index].fireSeconds);
    }
    /// Whether an alarm of one of these records fires before that date.
    [[nodiscard]] bool hasAlarmOf(const std::vector<EventDict>& eventDicts, Instant before) const;

    /// Adds the alarm of the record's reminder at the end, where it stays until sort(). The
    /// reminder has a fire date, to be read in the zone.
    void append(const EventDict& eventDict, const UpcomingReminder& reminder, const TimeZone& zone);
    /// Brings the appended alarms to their places. Equal ones keep the order in which they came.
    void sort();
    void clear();
    /// Empties the queue and gives what was in it, to be let go of elsewhere.
    [[nodiscard]] std::shared_ptr<void> takeContents();
    /// Removes the alarms of these records.
    void removeAlarmsOf(const std::vector<EventDict>& eventDicts);
    /// Takes out and gives the alarms whose fire date is at `now` or before it, in queue order.
    [[nodiscard]] std::vector<Alarm> takeDueAlarms(Instant now);

private:
    /// What most of the sorting and searching looks at, small and free to copy.
    struct Entry {
        /// Since the reference date; never NaN.
        double fireSeconds;
        /// Where in m_alarms the rest is.
        std::uint32_t place;
        /// Equal for the alarms of one record, and seldom for those of another.
        std::uint32_t recordMark;
    };
    struct PendingAlarm {
        EventDict eventDict;
        Dictionary reminderDict;
        TimeZone timeZone;
        std::int64_t fireDay;
    };
    class RecordSet;

    [[nodiscard]] bool isBefore(const Entry& left, const Entry& right) const;
    [[nodiscard]] FireDateTie tie(const Entry& entry) const;
    void sortTies(std::vector<Entry>::iterator begin);
    void sortOneMoment(std::span<Entry> entries) const;
    [[nodiscard]] bool isOfRecord(const Entry& entry, const RecordSet& records) const;
    /// Forgets the alarm behind an entry that leaves.
    void release(const Entry& entry);

    const TitleOrder& m_titles;
    std::vector<Entry> m_entries;
    /// The entries before this one are in order.
    std::size_t m_sortedCount = 0;
    /// In no order, some of them empty.
    std::vector<PendingAlarm> m_alarms;
    std::vector<std::uint32_t> m_emptyPlaces;
};

} // namespace plenzo
