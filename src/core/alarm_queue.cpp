#include "core/alarm_queue.h"

#include <algorithm>
#include <compare>
#include <unordered_set>
#include <utility>

namespace plenzo {

namespace {

std::uint32_t markOf(const Dictionary* record) {
    const auto address = reinterpret_cast<std::uintptr_t>(record);
    return static_cast<std::uint32_t>(address >> 4);
}

} // namespace

/// A set of records of which most tests need a look at one word only.
class AlarmQueue::RecordSet {
public:
    explicit RecordSet(const std::vector<EventDict>& eventDicts) {
        for (const EventDict& eventDict : eventDicts) {
            m_records.insert(eventDict.get());
            m_mayContain |= bit(markOf(eventDict.get()));
        }
    }
    [[nodiscard]] bool mayContain(std::uint32_t mark) const {
        return (m_mayContain & bit(mark)) != 0;
    }
    [[nodiscard]] bool contains(const Dictionary* record) const {
        return m_records.contains(record);
    }

private:
    static std::uint64_t bit(std::uint32_t mark) {
        return std::uint64_t{1} << ((mark >> 1 ^ mark >> 8) & 63);
    }

    std::uint64_t m_mayContain = 0;
    std::unordered_set<const Dictionary*> m_records;
};

FireDateTie AlarmQueue::tie(const Entry& entry) const {
    const PendingAlarm& alarm = m_alarms[entry.place];
    return FireDateTie(*alarm.eventDict, alarm.fireDay);
}

bool AlarmQueue::isBefore(const Entry& left, const Entry& right) const {
    if (left.fireSeconds != right.fireSeconds) {
        return left.fireSeconds < right.fireSeconds;
    }
    return std::is_lt(compare(tie(left), tie(right), m_titles));
}

Alarm AlarmQueue::operator[](std::size_t index) const {
    const PendingAlarm& pending = m_alarms[m_entries[index].place];
    Alarm alarm;
    alarm.fireDate = CalendarDate(fireDate(index), pending.timeZone);
    alarm.eventDict = pending.eventDict;
    alarm.reminderDict = pending.reminderDict;
    alarm.fireDay = pending.fireDay;
    return alarm;
}

bool AlarmQueue::isOfRecord(const Entry& entry, const RecordSet& records) const {
    return records.mayContain(entry.recordMark) &&
           records.contains(m_alarms[entry.place].eventDict.get());
}

bool AlarmQueue::hasAlarmOf(const std::vector<EventDict>& eventDicts, Instant before) const {
    const RecordSet records(eventDicts);
    const auto end = std::ranges::lower_bound(
        m_entries, before, {}, [](const Entry& entry) { return Instant(entry.fireSeconds); });
    return std::any_of(m_entries.begin(), end,
                       [&](const Entry& entry) { return isOfRecord(entry, records); });
}

void AlarmQueue::append(const EventDict& eventDict, const UpcomingReminder& reminder,
                        const TimeZone& zone) {
    const double fireSeconds = reminder.fireDate.value_or(Instant()).secondsSinceReferenceDate();
    PendingAlarm alarm{eventDict, *reminder.reminderDict, zone, reminder.fireDay};
    auto place = static_cast<std::uint32_t>(m_alarms.size());
    if (m_emptyPlaces.empty()) {
        m_alarms.push_back(std::move(alarm));
    } else {
        place = m_emptyPlaces.back();
        m_emptyPlaces.pop_back();
        m_alarms[place] = std::move(alarm);
    }
    m_entries.push_back({fireSeconds, place, markOf(eventDict.get())});
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
        return left.fireSeconds < right.fireSeconds;
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
        const auto end = std::find_if(begin + 1, m_entries.end(), [begin](const Entry& entry) {
            return entry.fireSeconds != begin->fireSeconds;
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
    for (const Entry& entry : entries) {
        ties.emplace_back(tie(entry), entry);
    }
    std::ranges::stable_sort(ties, [this](const auto& left, const auto& right) {
        return std::is_lt(compare(left.first, right.first, m_titles));
    });
    std::ranges::transform(ties, entries.begin(), [](const auto& tie) { return tie.second; });
}

void AlarmQueue::clear() {
    m_entries.clear();
    m_sortedCount = 0;
    m_alarms.clear();
    m_emptyPlaces.clear();
}

std::shared_ptr<void> AlarmQueue::takeContents() {
    auto contents = std::make_shared<std::vector<PendingAlarm>>(std::move(m_alarms));
    clear();
    return contents;
}

void AlarmQueue::release(const Entry& entry) {
    m_alarms[entry.place] = {};
    m_emptyPlaces.push_back(entry.place);
}

void AlarmQueue::removeAlarmsOf(const std::vector<EventDict>& eventDicts) {
    if (eventDicts.empty()) {
        return;
    }
    const RecordSet records(eventDicts);
    std::erase_if(m_entries, [&](const Entry& entry) {
        const bool goes = isOfRecord(entry, records);
        if (goes) {
            release(entry);
        }
        return goes;
    });
    m_sortedCount = m_entries.size();
}

std::vector<Alarm> AlarmQueue::takeDueAlarms(Instant now) {
    std::vector<Alarm> due;
    while (due.size() < m_entries.size() && fireDate(due.size()) <= now) {
        due.push_back((*this)[due.size()]);
        release(m_entries[due.size() - 1]);
    }
    m_entries.erase(m_entries.begin(), m_entries.begin() + static_cast<std::ptrdiff_t>(due.size()));
    m_sortedCount = m_entries.size();
    return due;
}

} // namespace plenzo
