#pragma once

#include "core/alarm_queue.h"
#include "propertylist/dictionary.h"

namespace plenzo {

/// Answers "what will fire, and when?" for whoever looks at the running agent from outside.
class Inspector {
public:
    explicit Inspector(const AlarmQueue& queue) : m_queue(queue) {}

    /// A dictionary for each pending alarm, in queue order: "fireDate", "fireDay", "uid" and
    /// "title" and "type" of the event, "reminderUid" and "reminderType". What a record lacks its
    /// row lacks.
    [[nodiscard]] Array pendingAlarms() const;

private:
    const AlarmQueue& m_queue;
};

} // namespace plenzo
