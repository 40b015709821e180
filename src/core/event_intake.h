#pragma once

#include "core/alarm_queue.h"
#include "core/event_collection.h"
#include "model/alarm_computation.h"
#include "model/event_dict.h"
#include "platform/clock.h"
#include "platform/disposal.h"
#include "platform/regional_settings.h"

#include <functional>
#include <optional>
#include <vector>

namespace plenzo {

/// Turns what the host pushes into the agent's two collections: every occurrence known from the
/// host, which it owns, and the queue of the alarms computed from them.
class EventIntake {
public:
    struct Collaborators {
        AlarmQueue& queue;
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        Disposal& disposal;
    };

    /// `queueChanged` is called after each intake, with the queue sorted.
    EventIntake(Collaborators collaborators, std::function<void()> queueChanged);

    /// None carries a deletion marker.
    [[nodiscard]] const EventCollection& allEventDicts() const { return m_allEventDicts; }

    /// Takes a batch in: a full update replaces everything, a delta patches it. In a delta a
    /// dictionary with "del" announces that its occurrence is gone, and a changed occurrence comes
    /// as such a notice together with a full record. With an issue time, alarms that fell due since
    /// then are created too. Elements that are no dictionaries are skipped.
    void processEventDicts(Array eventDicts, bool delta, std::optional<Instant> issueTime);

    /// The same for dictionaries that already are the agent's own.
    void processEvents(std::vector<EventDict> eventDicts, bool delta,
                       std::optional<Instant> issueTime);

    /// The queue anew from the records that are there, as of now: what a new day, another zone or a
    /// clock that was set asks for.
    void recomputeQueue();

private:
    void removeAllEvents();
    void removeDeletedEvents(const std::vector<EventDict>& eventDicts);
    [[nodiscard]] AlarmContext context() const;
    void addEvents(const std::vector<EventDict>& eventDicts, std::optional<Instant> issueTime);

    Collaborators m_collaborators;
    std::function<void()> m_queueChanged;
    EventCollection m_allEventDicts;
};

/// Gives every dictionary that has "colInt" the colour of it under "color".
void setEventColor(const std::vector<EventDict>& eventDicts);

} // namespace plenzo
