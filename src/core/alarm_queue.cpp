#include "core/alarm_queue.h"

#include "model/alarm_order.h"

#include <algorithm>
#include <compare>
#include <iterator>

namespace plenzo {

void AlarmQueue::append(std::vector<Alarm> alarms) {
    std::move(alarms.begin(), alarms.end(), std::back_inserter(m_alarms));
}

void AlarmQueue::sort() {
    std::stable_sort(m_alarms.begin(), m_alarms.end(),
                     [this](const Alarm& left, const Alarm& right) {
                         return std::is_lt(compareFireDate(left, right, m_titles));
                     });
}

void AlarmQueue::removeAlarmsWithUIDs(const std::unordered_set<std::string_view>& uids) {
    std::erase_if(m_alarms, [&uids](const Alarm& alarm) {
        const auto uid = alarm.eventDict->stringForKey(keys::uid);
        return uid && uids.contains(*uid);
    });
}

std::vector<Alarm> AlarmQueue::takeDueAlarms(Instant now) {
    const auto firstPending =
        std::find_if(m_alarms.begin(), m_alarms.end(), [now](const Alarm& alarm) {
            return alarm.fireDate && alarm.fireDate->instant() > now;
        });
    std::vector<Alarm> due(std::make_move_iterator(m_alarms.begin()),
                           std::make_move_iterator(firstPending));
    m_alarms.erase(m_alarms.begin(), firstPending);
    return due;
}

} // namespace plenzo
