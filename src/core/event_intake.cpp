#include "core/event_intake.h"

#include "model/alarm_computation.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace plenzo {

namespace {

bool isDeletionNotice(const Dictionary& eventDict) {
    return eventDict.contains(keys::del);
}

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

EventIntake::EventIntake(Collaborators collaborators, std::function<void()> queueChanged)
    : m_collaborators(collaborators), m_queueChanged(std::move(queueChanged)) {}

void EventIntake::processEventDicts(Array eventDicts, bool delta,
                                    std::optional<Instant> issueTime) {
    auto copies = deepCopies(std::move(eventDicts));
    setEventColor(copies);
    processEvents(std::move(copies), delta, issueTime);
}

// By value: the batch may be the collection that this replaces.
void EventIntake::processEvents(std::vector<EventDict> eventDicts, bool delta,
                                std::optional<Instant> issueTime) {
    if (delta) {
        removeDeletedEvents(eventDicts);
    } else {
        m_allEventDicts.clear();
        m_collaborators.queue.clear();
    }
    addEvents(std::move(eventDicts), issueTime);
    m_queueChanged();
}

void EventIntake::removeDeletedEvents(const std::vector<EventDict>& eventDicts) {
    std::vector<EventDict> removed;
    for (const EventDict& eventDict : eventDicts) {
        const auto uid = eventDict->stringForKey(keys::uid);
        if (uid && isDeletionNotice(*eventDict)) {
            std::ranges::move(m_allEventDicts.takeWithUID(*uid), std::back_inserter(removed));
        }
    }
    m_collaborators.queue.removeAlarmsOf(removed);
}

void EventIntake::addEvents(std::vector<EventDict> eventDicts, std::optional<Instant> issueTime) {
    const AlarmContext context{.now = m_collaborators.clock.now(),
                               .systemZone = m_collaborators.regionalSettings.timeZone()};
    AlarmQueue& queue = m_collaborators.queue;
    std::vector<Alarm> alarms;
    m_allEventDicts.reserveMore(eventDicts.size());
    for (EventDict& eventDict : eventDicts) {
        if (isDeletionNotice(*eventDict)) {
            continue;
        }
        appendAlarmsForEventDict(eventDict, issueTime, ProximityAlarms::Exclude, context, alarms);
        for (Alarm& alarm : alarms) {
            queue.append(std::move(alarm));
        }
        alarms.clear();
        m_allEventDicts.append(std::move(eventDict));
    }
    queue.sort();
}

void setEventColor(const std::vector<EventDict>& eventDicts) {
    for (const EventDict& eventDict : eventDicts) {
        if (eventDict->contains(keys::colInt)) {
            const std::int64_t packed = eventDict->integerForKey(keys::colInt);
            eventDict->set(keys::color, Value(colorFromPackedInteger(packed)));
        }
    }
}

} // namespace plenzo
