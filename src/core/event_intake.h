#pragma once

#include "core/alarm_queue.h"
#include "core/event_collection.h"
#include "core/fired_alarms.h"
#include "core/kept_file_access.h"
#include "core/notification_delivery.h"
#include "core/shown_alarms.h"
#include "core/status_window_controller.h"
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
/// host, which it owns, and the queue of the alarms computed from them. Takes away what a batch
/// cancels of what the user sees.
class EventIntake {
public:
    struct Collaborators {
        AlarmQueue& queue;
        const FiredAlarms& firedAlarms;
        ShownAlarms& shownAlarms;
        NotificationDelivery& notifications;
        KeptFileAccess& fileAccess;
        /// Null when there is none.
        StatusWindowController* statusWindow;
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        Disposal& disposal;
    };
    struct Steps {
        /// Called before the queue changes: what is due by then is not to be lost.
        std::function<void()> fireAlarm;
        /// Called afterwards, with the queue sorted.
        std::function<void()> queueChanged;
    };

    EventIntake(Collaborators collaborators, Steps steps);

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

    /// A full update by the records that are there: the queue anew, as of now.
    void reprocessAllEvents();

private:
    [[nodiscard]] AlarmContext context() const;
    void removeAllEvents();
    void patchEvents(const std::vector<EventDict>& eventDicts);
    void addEvents(const std::vector<EventDict>& eventDicts, std::optional<Instant> issueTime);
    void finish(std::span<const EventDict> eventDicts, bool delta) const;

    Collaborators m_collaborators;
    Steps m_steps;
    EventCollection m_allEventDicts;
};

/// Gives every dictionary that has "colInt" the colour of it under "color".
void setEventColor(const std::vector<EventDict>& eventDicts);

} // namespace plenzo
