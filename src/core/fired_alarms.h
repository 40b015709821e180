#pragma once

#include "dates/instant.h"
#include "propertylist/dictionary.h"

#include <limits>
#include <set>
#include <string>
#include <tuple>

namespace plenzo {

/// What has fired of late. The clock may show a moment twice: when it is set back, and to whoever
/// is faster than it ticks. An alarm that has fired at its date does not come again when the queue
/// is computed anew then. One whose record or reminder has no "uid" cannot be told from others and
/// is not remembered.
class FiredAlarms {
public:
    /// False when it is there already.
    bool add(const Dictionary& eventDict, const Dictionary& reminderDict, Instant fireDate);
    [[nodiscard]] bool contains(const Dictionary& eventDict, const Dictionary& reminderDict,
                                Instant fireDate) const {
        return fireDate <= m_latest && holds(eventDict, reminderDict, fireDate);
    }
    /// Everything that was due until then has fired, unless it is in the queue.
    [[nodiscard]] Instant latest() const { return m_latest; }
    /// Forgets those that were due before the date.
    void forgetBefore(Instant date);

private:
    /// The date in seconds, the record's "uid", the reminder's.
    using FiredAlarm = std::tuple<double, std::string, std::string>;

    [[nodiscard]] bool holds(const Dictionary& eventDict, const Dictionary& reminderDict,
                             Instant fireDate) const;

    Instant m_latest{-std::numeric_limits<double>::infinity()};
    std::set<FiredAlarm> m_alarms;
};

} // namespace plenzo
