#include "host/ical/alarm_reader.h"

#include "host/ical/identifiers.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace plenzo {

namespace {

constexpr std::size_t mostAlarms = 50;
constexpr int mostRepetitions = 30;

AlarmAction actionOf(icalcomponent* alarm) {
    const icalproperty* property = firstPropertyOf(alarm, ICAL_ACTION_PROPERTY);
    const icalvalue* value = property == nullptr ? nullptr : icalproperty_get_value(property);
    if (value == nullptr || icalvalue_isa(value) != ICAL_ACTION_VALUE) {
        return AlarmAction::None;
    }
    switch (icalvalue_get_action(value)) {
    case ICAL_ACTION_DISPLAY:
    case ICAL_ACTION_PROCEDURE:
        return AlarmAction::Display;
    case ICAL_ACTION_AUDIO:
        return AlarmAction::Audio;
    case ICAL_ACTION_EMAIL:
        return AlarmAction::Email;
    default:
        return AlarmAction::None;
    }
}

bool countsFromEnd(icalproperty* trigger) {
    icalparameter* related = icalproperty_get_first_parameter(trigger, ICAL_RELATED_PARAMETER);
    return related != nullptr && icalparameter_get_related(related) == ICAL_RELATED_END;
}

bool readTrigger(icalcomponent* alarm, AlarmDefinition& definition, ZoneTable& zones) {
    for (icalproperty* trigger : propertiesOf(alarm, ICAL_TRIGGER_PROPERTY)) {
        if (const auto duration = durationOf(trigger)) {
            definition.relativeTrigger = *duration;
            definition.triggerBase = countsFromEnd(trigger) ? TriggerBase::End : TriggerBase::Start;
            return true;
        }
        definition.absoluteTrigger = universalTimeOf(trigger, zones);
        if (definition.absoluteTrigger) {
            return true;
        }
    }
    return false;
}

// REPEAT means something only together with a DURATION that moves forward.
void readRepetition(icalcomponent* alarm, AlarmDefinition& definition) {
    const icalproperty* interval = firstPropertyOf(alarm, ICAL_DURATION_PROPERTY);
    const auto duration = interval == nullptr ? std::nullopt : durationOf(interval);
    if (duration && (duration->days > 0 || duration->seconds > 0)) {
        definition.repeatInterval = *duration;
        definition.repeatCount =
            std::clamp(numberOf(firstPropertyOf(alarm, ICAL_REPEAT_PROPERTY)), 0, mostRepetitions);
    }
}

/// The name in an address like "file:///usr/share/sounds/bell.wav", or one that stands alone.
std::string soundNameOf(icalcomponent* alarm) {
    const icalproperty* property = firstPropertyOf(alarm, ICAL_ATTACH_PROPERTY);
    const icalvalue* value = property == nullptr ? nullptr : icalproperty_get_value(property);
    if (value == nullptr || icalvalue_isa(value) != ICAL_ATTACH_VALUE) {
        return {};
    }
    icalattach* attachment = icalvalue_get_attach(value);
    if (attachment == nullptr || icalattach_get_is_url(attachment) == 0) {
        return {};
    }
    std::string name = icalattach_get_url(attachment);
    name.erase(0, name.find_last_of("/:") + 1); // npos + 1 is 0
    return name.substr(0, name.find_last_of('.'));
}

std::vector<std::string> recipientsOf(icalcomponent* alarm) {
    std::vector<std::string> recipients;
    for (icalproperty* property : propertiesOf(alarm, ICAL_ATTENDEE_PROPERTY)) {
        std::string address = mailAddressOf(property);
        if (!address.empty()) {
            recipients.push_back(std::move(address));
        }
    }
    return recipients;
}

std::string derivedUid(const AlarmDefinition& definition) {
    const std::int64_t at =
        definition.absoluteTrigger ? unixSecondsOf(*definition.absoluteTrigger) : 0;
    std::string what = std::to_string(static_cast<int>(definition.action)) + ' ' +
                       std::to_string(static_cast<int>(definition.triggerBase)) + ' ' +
                       std::to_string(definition.relativeTrigger.days) + ' ' +
                       std::to_string(definition.relativeTrigger.seconds) + ' ' +
                       std::to_string(at) + ' ' + definition.soundName;
    return "alarm-" + stableHashText(what);
}

std::optional<AlarmDefinition> alarmOf(icalcomponent* alarm, ZoneTable& zones) {
    AlarmDefinition definition;
    if (!readTrigger(alarm, definition, zones)) {
        return std::nullopt;
    }
    definition.action = actionOf(alarm);
    readRepetition(alarm, definition);
    definition.soundName = soundNameOf(alarm);
    definition.recipients = recipientsOf(alarm);
    if (icalproperty* property = firstPropertyOf(alarm, ICAL_ACKNOWLEDGED_PROPERTY)) {
        definition.acknowledged = universalTimeOf(property, zones);
    }
    definition.uid = firstTextOf(alarm, ICAL_UID_PROPERTY);
    if (definition.uid.empty()) {
        definition.uid = derivedUid(definition);
    }
    return definition;
}

void makeDifferent(std::string& uid, std::set<std::string>& known) {
    const std::string base = uid;
    for (int number = 2; !known.insert(uid).second; ++number) {
        uid = base + "-" + std::to_string(number);
    }
}

} // namespace

std::vector<AlarmDefinition> alarmsOf(icalcomponent* component, ZoneTable& zones) {
    std::vector<AlarmDefinition> alarms;
    std::set<std::string> uids;
    icalcomponent* part = icalcomponent_get_first_component(component, ICAL_VALARM_COMPONENT);
    for (int place = 0; part != nullptr && alarms.size() < mostAlarms; ++place) {
        if (auto alarm = alarmOf(part, zones)) {
            alarm->place = place;
            makeDifferent(alarm->uid, uids);
            alarms.push_back(std::move(*alarm));
        }
        part = icalcomponent_get_next_component(component, ICAL_VALARM_COMPONENT);
    }
    return alarms;
}

std::vector<std::string> derivedUidsOf(const std::vector<AlarmDefinition>& alarms) {
    std::vector<std::string> uids;
    std::set<std::string> known;
    for (const AlarmDefinition& alarm : alarms) {
        makeDifferent(uids.emplace_back(derivedUid(alarm)), known);
    }
    return uids;
}

} // namespace plenzo
