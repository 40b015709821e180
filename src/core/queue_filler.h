#pragma once

#include "core/alarm_queue.h"
#include "core/record_walk.h"
#include "model/alarm_computation.h"
#include "model/event_dict.h"

#include <optional>
#include <vector>

namespace plenzo {

/// Appends the alarms of records to the queue, all as of one moment, without proximity alarms.
class QueueFiller {
public:
    QueueFiller(AlarmQueue& queue, std::optional<Instant> issueTime, const AlarmContext& context)
        : m_queue(queue), m_issueTime(issueTime), m_context(context) {}

    /// Skips null ones and deletion notices. The queue is to be sorted afterwards.
    void appendAlarmsOf(RecordGroup group);

private:
    void appendAlarmsOf(const EventDict& eventDict);

    AlarmQueue& m_queue;
    std::optional<Instant> m_issueTime;
    AlarmContext m_context;
    std::vector<UpcomingReminder> m_reminders;
};

} // namespace plenzo
