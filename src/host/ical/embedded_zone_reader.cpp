#include "host/ical/embedded_zone_reader.h"

#include "host/ical/ical_values.h"
#include "host/ical/recurrence_rule.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr std::int64_t mostChanges = 1000;
const CivilSpan expandedSpan{cctz::civil_second(1, 1, 1), cctz::civil_second(2100, 12, 31)};

/// One STANDARD or DAYLIGHT part: its offsets and the local times at which it sets in.
struct Observance {
    std::int64_t offsetFromSeconds = 0;
    std::int64_t offsetToSeconds = 0;
    std::vector<cctz::civil_second> onsets;
};

std::optional<std::int64_t> offsetOf(icalcomponent* part, icalproperty_kind kind) {
    const icalproperty* property = firstPropertyOf(part, kind);
    const icalvalue* value = property == nullptr ? nullptr : icalproperty_get_value(property);
    if (value == nullptr || icalvalue_isa(value) != ICAL_UTCOFFSET_VALUE) {
        return std::nullopt;
    }
    return icalvalue_get_utcoffset(value);
}

// Onsets are local times read with the offset before the change; an UNTIL is in UTC.
void addRuleOnsets(Observance& observance, icalcomponent* part, const CalendarTime& start) {
    auto offset = std::make_shared<EmbeddedZone>();
    offset->firstOffsetSeconds = observance.offsetFromSeconds;
    const CalendarTime zonedStart{TimeForm::Zoned, start.local, CalendarZone(std::move(offset))};
    ExpansionBudget budget{mostChanges * 20, mostChanges};
    for (icalproperty* property : propertiesOf(part, ICAL_RRULE_PROPERTY)) {
        const auto rule = RecurrenceRule::fromText(ruleTextOf(property));
        if (rule) {
            const auto times = rule->localTimes(zonedStart, expandedSpan, CalendarZone(), budget);
            observance.onsets.insert(observance.onsets.end(), times.begin(), times.end());
        }
    }
}

std::optional<Observance> observanceOf(icalcomponent* part, ZoneTable& zones) {
    icalproperty* startProperty = firstPropertyOf(part, ICAL_DTSTART_PROPERTY);
    const auto start = startProperty == nullptr ? std::nullopt : timeOf(startProperty, zones);
    const auto offsetFrom = offsetOf(part, ICAL_TZOFFSETFROM_PROPERTY);
    const auto offsetTo = offsetOf(part, ICAL_TZOFFSETTO_PROPERTY);
    if (!start || !offsetFrom || !offsetTo) {
        return std::nullopt;
    }
    Observance observance{*offsetFrom, *offsetTo, {start->local}};
    addRuleOnsets(observance, part, *start);
    for (icalproperty* property : propertiesOf(part, ICAL_RDATE_PROPERTY)) {
        if (const auto time = timeOf(property, zones)) {
            observance.onsets.push_back(time->local);
        }
    }
    return observance;
}

std::vector<Observance> observancesOf(icalcomponent* zone) {
    ZoneTable noZones({});
    std::vector<Observance> observances;
    for (const auto kind : {ICAL_XSTANDARD_COMPONENT, ICAL_XDAYLIGHT_COMPONENT}) {
        icalcomponent* part = icalcomponent_get_first_component(zone, kind);
        for (; part != nullptr; part = icalcomponent_get_next_component(zone, kind)) {
            if (auto observance = observanceOf(part, noZones)) {
                observances.push_back(std::move(*observance));
            }
        }
    }
    return observances;
}

void addChanges(EmbeddedZone& zone, const Observance& observance) {
    for (const cctz::civil_second& onset : observance.onsets) {
        const std::int64_t at =
            onset - cctz::civil_second(1970, 1, 1) - observance.offsetFromSeconds;
        zone.changes.push_back({at, observance.offsetToSeconds});
    }
}

std::int64_t firstOnsetSeconds(const Observance& observance) {
    return *std::min_element(observance.onsets.begin(), observance.onsets.end()) -
           cctz::civil_second(1970, 1, 1);
}

} // namespace

std::string zoneNameOfDefinition(std::string_view text) {
    const ComponentPointer component = parsedComponent(text);
    return component ? firstTextOf(component.get(), ICAL_TZID_PROPERTY) : std::string();
}

std::shared_ptr<const EmbeddedZone> embeddedZoneFromText(std::string_view text) {
    const ComponentPointer component = parsedComponent(text);
    const auto observances = component ? observancesOf(component.get()) : std::vector<Observance>();
    if (observances.empty()) {
        return nullptr;
    }
    const auto first =
        std::min_element(observances.begin(), observances.end(),
                         [](const Observance& left, const Observance& right) {
                             return firstOnsetSeconds(left) < firstOnsetSeconds(right);
                         });
    auto zone = std::make_shared<EmbeddedZone>();
    zone->firstOffsetSeconds = first->offsetFromSeconds;
    for (const Observance& observance : observances) {
        addChanges(*zone, observance);
    }
    std::sort(zone->changes.begin(), zone->changes.end(),
              [](const EmbeddedZone::Change& left, const EmbeddedZone::Change& right) {
                  return left.atUnixSeconds < right.atUnixSeconds;
              });
    return zone;
}

} // namespace plenzo
