#include "host/records/alarm_entries.h"

#include "host/ical/identifiers.h"
#include "host/records/agent_date.h"
#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"

#include <algorithm>
#include <cstdlib>

namespace plenzo {

namespace {

constexpr std::int64_t daySeconds = 86400;
constexpr std::int64_t farthestReachSeconds = 400 * daySeconds;

int reminderType(AlarmAction action) {
    switch (action) {
    case AlarmAction::Display:
        return 0;
    case AlarmAction::Audio:
        return 1;
    case AlarmAction::Email:
        return 2;
    case AlarmAction::None:
        break;
    }
    return 3;
}

/// What a relative trigger counts from: the end it names or, where that is missing, the other one.
const std::optional<CalendarTime>& baseOf(const AlarmDefinition& definition,
                                          const Occurrence& occurrence) {
    const bool isFromEnd = definition.triggerBase == TriggerBase::End;
    const auto& wanted = isFromEnd ? occurrence.end : occurrence.start;
    return wanted ? wanted : isFromEnd ? occurrence.start : occurrence.end;
}

std::optional<SystemSeconds> firstMoment(const AlarmDefinition& definition,
                                         const Occurrence& occurrence,
                                         const CalendarZone& systemZone) {
    if (definition.absoluteTrigger) {
        return definition.absoluteTrigger;
    }
    const auto& base = baseOf(definition, occurrence);
    if (!base) {
        return std::nullopt;
    }
    return movedBy(instantOf(*base, systemZone), definition.relativeTrigger,
                   zoneOf(*base, systemZone));
}

std::int64_t secondsOf(const CalendarDuration& duration) {
    return duration.days * daySeconds + duration.seconds;
}

void setAction(Dictionary& entry, const AlarmDefinition& definition) {
    entry.set(keys::type, reminderType(definition.action));
    if (definition.action == AlarmAction::Audio && !definition.soundName.empty()) {
        entry.set(keys::url, definition.soundName);
    }
    if (definition.action == AlarmAction::Email) {
        Array recipients;
        for (const std::string& recipient : definition.recipients) {
            recipients.append(recipient);
        }
        entry.set(keys::to, std::move(recipients));
    }
}

/// RFC 9074, 6.1: an alarm is acknowledged at or after its moment; the agent wants later than it.
SystemSeconds acknowledgedFor(const AlarmMoment& moment) {
    const SystemSeconds acknowledged = *moment.definition->acknowledged;
    return acknowledged == moment.at ? acknowledged + cctz::seconds(1) : acknowledged;
}

Dictionary reminderEntry(const AlarmMoment& moment, SystemSeconds occurrenceDate,
                         std::string_view occurrenceUid) {
    const AlarmDefinition& definition = *moment.definition;
    std::string uid = joinedIdentifiers(occurrenceUid, urlSafe(definition.uid));
    if (moment.repetition > 0) {
        uid = joinedIdentifiers(uid, "r" + std::to_string(moment.repetition));
    }
    Dictionary entry{{keys::uid, uid}};
    setAction(entry, definition);
    if (definition.absoluteTrigger) {
        entry.set(keys::abs, agentDate(moment.at));
    } else {
        entry.set(keys::rel, static_cast<double>((moment.at - occurrenceDate).count()));
    }
    if (definition.acknowledged) {
        entry.set(keys::ack, agentDate(acknowledgedFor(moment)));
    }
    return entry;
}

} // namespace

std::vector<AlarmMoment> alarmMomentsOf(const Occurrence& occurrence,
                                        const CalendarZone& systemZone) {
    std::vector<AlarmMoment> moments;
    for (const AlarmDefinition& definition : occurrence.item->alarms) {
        auto at = firstMoment(definition, occurrence, systemZone);
        for (int repetition = 0; at && repetition <= definition.repeatCount; ++repetition) {
            moments.push_back({&definition, repetition, *at});
            at = movedBy(*at, definition.repeatInterval, systemZone);
        }
    }
    return moments;
}

Array reminderEntries(const std::vector<AlarmMoment>& moments, SystemSeconds occurrenceDate,
                      std::string_view occurrenceUid) {
    Array entries;
    entries.reserve(moments.size());
    for (const AlarmMoment& moment : moments) {
        entries.append(reminderEntry(moment, occurrenceDate, occurrenceUid));
    }
    return entries;
}

ExpansionReach reachOfAlarms(const std::vector<AlarmDefinition>& alarms) {
    ExpansionReach reach;
    for (const AlarmDefinition& alarm : alarms) {
        const std::int64_t first = secondsOf(alarm.relativeTrigger);
        const std::int64_t last = first + alarm.repeatCount * secondsOf(alarm.repeatInterval);
        reach.afterSeconds = std::max(reach.afterSeconds, -first);
        reach.beforeSeconds = std::max(reach.beforeSeconds, last);
    }
    reach.afterSeconds = std::min(reach.afterSeconds, farthestReachSeconds);
    reach.beforeSeconds = std::min(reach.beforeSeconds, farthestReachSeconds);
    return reach;
}

} // namespace plenzo
