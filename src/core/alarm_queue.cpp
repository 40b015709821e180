#include "core/alarm_queue.h"

#include "model/alarm_order.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <unordered_set>
#include <utility>

namespace plenzo {

namespace {

/// A set of records of which most tests need a look at one word only.
class RecordSet {
public:
    void insert(const Dictionary* record) {
        m_mayContain |= bit(record);
        m_records.insert(record);
    }
    [[nodiscard]] bool contains(const Dictionary* record) const {
        return (m_mayContain & bit(record)) != 0 && m_records.contains(record);
    }

private:
    static std::uint64_t bit(const Dictionary* record) {
        const auto address = reinterpret_cast<std::uintptr_t>(record);
        return std::uint64_t{1} << ((address >> 5 ^ address >> 12) & 63);
    }

    std::uint64_t m_mayContain = 0;
    std::unordered_set<const Dictionary*> m_records;
};

} // namespace

bool AlarmQueue::isBefore(const Entry& left, const Entry& right) const {
    if (left.fireDate != right.fireDate) {
        return left.fireDate < right.fireDate;
    }
    return std::is_lt(compareFireDate(*left.alarm, *right.alarm, m_titles));
}

void AlarmQueue::append(Alarm alarm) {
    const Instant fireDate = fireInstant(alarm);
    const Dictionary* eventDict = alarm.eventDict.get();
    m_entries.push_back({fireDate, eventDict, std::make_unique<Alarm>(std::move(alarm))});
}

void AlarmQueue::sort() {
    const auto inOrder = [this](const Entry& left, const Entry& right) {
        return isBefore(left, right);
    };
    const auto added = m_entries.begin() + static_cast<std::ptrdiff_t>(m_sortedCount);
    m_sortedCount = m_entries.size();
    if (added == m_entries.end()) {
        return;
    }
    std::stable_sort(added, m_entries.end(), [](const Entry& left, const Entry& right) {
        return left.fireDate < right.fireDate;
    });
    sortTies(added);
    // What comes before the first of the new ones stays where it is.
    const auto firstPlace = std::upper_bound(m_entries.begin(), added, *added, inOrder);
    std::inplace_merge(firstPlace, added, m_entries.end(), inOrder);
}

/// Alarms of one moment are many in a calendar of whole hours, so their records are read once each
/// and not at every comparison.
void AlarmQueue::sortTies(std::vector<Entry>::iterator begin) {
    while (begin != m_entries.end()) {
        const auto end = std::find_if(begin, m_entries.end(), [begin](const Entry& entry) {
            return entry.fireDate != begin->fireDate;
        });
        if (end - begin > 1) {
            sortOneMoment({begin, end});
        }
        begin = end;
    }
}

void AlarmQueue::sortOneMoment(std::span<Entry> entries) const {
    std::vector<std::pair<FireDateTie, Entry>> ties;
    ties.reserve(entries.size());
    for (Entry& entry : entries) {
        const FireDateTie tie(*entry.alarm);
        ties.emplace_back(tie, std::move(entry));
    }
    std::ranges::stable_sort(ties, [this](const auto& left, const auto& right) {
        return std::is_lt(compare(left.first, right.first, m_titles));
    });
    std::ranges::transform(ties, entries.begin(), [](auto& tie) { return std::move(tie.second); });
}

void AlarmQueue::clear() {
    m_entries.clear();
    m_sortedCount = 0;
}

void AlarmQueue::removeAlarmsOf(const std::vector<EventDict>& eventDicts) {
    RecordSet records;
    for (const EventDict& eventDict : eventDicts) {
        records.insert(eventDict.get());
    }
    if (!eventDicts.empty()) {
        std::erase_if(m_entries,
                      [&records](const Entry& entry) { return records.contains(entry.eventDict); });
        m_sortedCount = m_entries.size();
    }
}

std::vector<Alarm> AlarmQueue::takeDueAlarms(Instant now) {
    const auto firstPending =
        std::find_if(m_entries.begin(), m_entries.end(),
                     [now](const Entry& entry) { return entry.fireDate > now; });
    std::vector<Alarm> due;
    for (auto entry = m_entries.begin(); entry != firstPending; ++entry) {
        due.push_back(std::move(*entry->alarm));
    }
    m_entries.erase(m_entries.begin(), firstPending);
    m_sortedCount = m_entries.size();
    return due;
}

} // namespace plenzo
