#include "core/event_intake.h"

#include "core/delta.h"
#include "core/queue_filler.h"
#include "core/record_walk.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace plenzo {

namespace {

/// The agent's own copies, independent of what arrived. What nobody else holds is taken over.
std::vector<EventDict> deepCopies(Array eventDicts) {
    std::vector<EventDict> copies;
    copies.reserve(eventDicts.size());
    for (std::size_t index = 0; index < eventDicts.size(); ++index) {
        if (Dictionary* dictionary = eventDicts.findMutable(index)->mutableDictionary()) {
            copies.push_back(std::make_shared<Dictionary>(std::move(*dictionary)));
        }
    }
    return copies;
}

} // namespace

EventIntake::EventIntake(Collaborators collaborators, Steps steps)
    : m_collaborators(collaborators), m_steps(std::move(steps)) {}

void EventIntake::processEventDicts(Array eventDicts, bool delta,
                                    std::optional<Instant> issueTime) {
    auto copies = deepCopies(std::move(eventDicts));
    setEventColor(copies);
    processEvents(std::move(copies), delta, issueTime);
}

void EventIntake::processEvents(std::vector<EventDict> eventDicts, bool delta,
                                std::optional<Instant> issueTime) {
    m_steps.fireAlarm();
    if (delta) {
        patchEvents(eventDicts);
    } else {
        removeAllEvents();
    }
    addEvents(eventDicts, issueTime);
    finish(eventDicts, delta);
    m_collaborators.disposal.dispose(
        std::make_shared<std::vector<EventDict>>(std::move(eventDicts)));
}

void EventIntake::reprocessAllEvents() {
    m_steps.fireAlarm();
    AlarmQueue& queue = m_collaborators.queue;
    queue.clear();
    QueueFiller filler(queue, m_collaborators.firedAlarms, std::nullopt, context());
    forEachGroup(m_allEventDicts.eventDicts(),
                 [&filler](RecordGroup group) { filler.appendAlarmsOf(group); });
    queue.sort();
    finish(m_allEventDicts.eventDicts(), false);
}

void EventIntake::finish(std::span<const EventDict> eventDicts, bool delta) const {
    m_steps.queueChanged();
    if (m_collaborators.statusWindow != nullptr) {
        m_collaborators.statusWindow->updateShownEventsWithEventDicts(eventDicts, delta);
    }
}

/// The memory of very many records takes longer to free than the new ones take to be read.
void EventIntake::removeAllEvents() {
    m_collaborators.fileAccess.forgetNoted();
    Disposal& disposal = m_collaborators.disposal;
    disposal.dispose(m_collaborators.queue.takeContents());
    disposal.dispose(
        std::make_shared<EventCollection>(std::exchange(m_allEventDicts, EventCollection())));
}

void EventIntake::patchEvents(const std::vector<EventDict>& eventDicts) {
    ShownAlarms& shownAlarms = m_collaborators.shownAlarms;
    NotificationDelivery& notifications = m_collaborators.notifications;
    const Delta delta(eventDicts);
    std::vector<EventDict> removed;
    for (const std::string_view uid : delta.deleted()) {
        std::ranges::move(m_allEventDicts.takeWithUID(uid), std::back_inserter(removed));
    }
    m_collaborators.queue.removeAlarmsOf(removed);
    for (const EventDict& eventDict : eventDicts) {
        const auto uid = eventDict->stringForKey(keys::uid);
        if (uid && delta.isTrueDeletion(*eventDict)) {
            notifications.removeNotificationsForUIDPlusDay(*uid);
            shownAlarms.removeAlarmsForUIDPlusDay(*uid);
        } else if (delta.isReplacement(*eventDict)) {
            notifications.removeNotificationsForDeletedOrAckdRemindersInEventDict(*eventDict);
            shownAlarms.removeAlarmsForDeletedOrAckdRemindersInEventDict(*eventDict);
        }
    }
    if (m_collaborators.statusWindow != nullptr) {
        m_collaborators.statusWindow->removeShownEventsWithUIDs(
            {delta.deleted().begin(), delta.deleted().end()});
    }
}

void EventIntake::addEvents(const std::vector<EventDict>& eventDicts,
                            std::optional<Instant> issueTime) {
    QueueFiller filler(m_collaborators.queue, m_collaborators.firedAlarms, issueTime, context());
    m_allEventDicts.reserveMore(eventDicts.size());
    // All that is done with a record is done while it is at hand.
    forEachGroup(eventDicts, [&](RecordGroup group) {
        filler.appendAlarmsOf(group);
        m_allEventDicts.append(group);
        m_collaborators.fileAccess.saveSecureFileURLsIn(group);
    });
    m_collaborators.queue.sort();
    m_collaborators.fileAccess.saveNext();
}

AlarmContext EventIntake::context() const {
    return {.now = m_collaborators.clock.now(),
            .systemZone = m_collaborators.regionalSettings.timeZone()};
}

void setEventColor(const std::vector<EventDict>& eventDicts) {
    forEachGroup(eventDicts, [](RecordGroup group) {
        for (const EventDict& eventDict : group) {
            if (const Value* packed = eventDict->find(keys::colInt)) {
                const Color color = colorFromPackedInteger(packed->integerValue());
                eventDict->set(keys::color, color);
            }
        }
    });
}

} // namespace plenzo
