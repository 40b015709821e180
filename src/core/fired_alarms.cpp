#include "core/fired_alarms.h"

#include "propertylist/known_keys.h"

#include <algorithm>

namespace plenzo {

bool FiredAlarms::add(const Dictionary& eventDict, const Dictionary& reminderDict,
                      Instant fireDate) {
    m_latest =
        std::max(m_latest, fireDate, [](Instant left, Instant right) { return left < right; });
    const auto eventUID = eventDict.stringForKey(keys::uid);
    const auto reminderUID = reminderDict.stringForKey(keys::uid);
    if (!eventUID || !reminderUID) {
        return true;
    }
    return m_alarms
        .insert({fireDate.secondsSinceReferenceDate(), std::string(*eventUID),
                 std::string(*reminderUID)})
        .second;
}

bool FiredAlarms::holds(const Dictionary& eventDict, const Dictionary& reminderDict,
                        Instant fireDate) const {
    const auto eventUID = eventDict.stringForKey(keys::uid);
    const auto reminderUID = reminderDict.stringForKey(keys::uid);
    return eventUID && reminderUID &&
           m_alarms.contains({fireDate.secondsSinceReferenceDate(), std::string(*eventUID),
                              std::string(*reminderUID)});
}

void FiredAlarms::forgetBefore(Instant date) {
    m_alarms.erase(m_alarms.begin(),
                   m_alarms.lower_bound({date.secondsSinceReferenceDate(), "", ""}));
}

} // namespace plenzo
