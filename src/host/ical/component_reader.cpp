#include "host/ical/component_reader.h"

#include "host/ical/alarm_reader.h"
#include "host/ical/ical_values.h"

#include <algorithm>

namespace plenzo {

namespace {

std::optional<CalendarTime> firstTimeOf(icalcomponent* component, icalproperty_kind kind,
                                        ZoneTable& zones) {
    icalproperty* property = firstPropertyOf(component, kind);
    return property == nullptr ? std::nullopt : timeOf(property, zones);
}

std::optional<SystemSeconds> firstUniversalTimeOf(icalcomponent* component, icalproperty_kind kind,
                                                  ZoneTable& zones) {
    icalproperty* property = firstPropertyOf(component, kind);
    return property == nullptr ? std::nullopt : universalTimeOf(property, zones);
}

void readTimes(icalcomponent* component, CalendarItem& item, ZoneTable& zones) {
    const bool isEvent = item.kind == ItemKind::Event;
    item.start = firstTimeOf(component, ICAL_DTSTART_PROPERTY, zones);
    item.end = firstTimeOf(component, isEvent ? ICAL_DTEND_PROPERTY : ICAL_DUE_PROPERTY, zones);
    if (const icalproperty* property = firstPropertyOf(component, ICAL_DURATION_PROPERTY)) {
        item.duration = durationOf(property);
    }
    item.recurrenceId = firstTimeOf(component, ICAL_RECURRENCEID_PROPERTY, zones);
    if (item.recurrenceId) {
        icalproperty* property = firstPropertyOf(component, ICAL_RECURRENCEID_PROPERTY);
        icalparameter* range = icalproperty_get_first_parameter(property, ICAL_RANGE_PARAMETER);
        item.appliesToFuture =
            range != nullptr && icalparameter_get_range(range) == ICAL_RANGE_THISANDFUTURE;
    }
}

std::vector<std::string> rulesOf(icalcomponent* component, icalproperty_kind kind) {
    std::vector<std::string> rules;
    for (const icalproperty* property : propertiesOf(component, kind)) {
        std::string rule = ruleTextOf(property);
        if (!rule.empty()) {
            rules.push_back(std::move(rule));
        }
    }
    return rules;
}

std::optional<ExtraDate> extraDateOf(icalproperty* property, ZoneTable& zones) {
    if (auto period = periodOf(property, zones)) {
        return period;
    }
    const auto start = timeOf(property, zones);
    return start ? std::optional(ExtraDate{*start, std::nullopt, std::nullopt}) : std::nullopt;
}

void readRecurrence(icalcomponent* component, RecurrenceProperties& recurrence, ZoneTable& zones) {
    recurrence.rules = rulesOf(component, ICAL_RRULE_PROPERTY);
    recurrence.exceptionRules = rulesOf(component, ICAL_EXRULE_PROPERTY);
    for (icalproperty* property : propertiesOf(component, ICAL_RDATE_PROPERTY)) {
        if (auto date = extraDateOf(property, zones)) {
            recurrence.extraDates.push_back(std::move(*date));
        }
    }
    for (icalproperty* property : propertiesOf(component, ICAL_EXDATE_PROPERTY)) {
        if (auto date = timeOf(property, zones)) {
            recurrence.exceptionDates.push_back(std::move(*date));
        }
    }
}

std::vector<std::string> attendeesOf(icalcomponent* component) {
    std::vector<std::string> attendees;
    for (icalproperty* property : propertiesOf(component, ICAL_ATTENDEE_PROPERTY)) {
        icalparameter* parameter = icalproperty_get_first_parameter(property, ICAL_CN_PARAMETER);
        const char* name = parameter == nullptr ? nullptr : icalparameter_get_cn(parameter);
        std::string text = name == nullptr ? mailAddressOf(property) : name;
        if (!text.empty()) {
            attendees.push_back(std::move(text));
        }
    }
    return attendees;
}

void readTexts(icalcomponent* component, CalendarItem& item) {
    item.uid = firstTextOf(component, ICAL_UID_PROPERTY);
    item.sequence = numberOf(firstPropertyOf(component, ICAL_SEQUENCE_PROPERTY));
    item.title = firstTextOf(component, ICAL_SUMMARY_PROPERTY);
    item.location = firstTextOf(component, ICAL_LOCATION_PROPERTY);
    item.notes = firstTextOf(component, ICAL_DESCRIPTION_PROPERTY);
    item.url = firstTextOf(component, ICAL_URL_PROPERTY);
    item.attendees = attendeesOf(component);
    for (const icalproperty* property : propertiesOf(component, ICAL_CATEGORIES_PROPERTY)) {
        std::string category = textOf(property);
        if (!category.empty()) {
            item.categories.push_back(std::move(category));
        }
    }
}

void readState(icalcomponent* component, CalendarItem& item, ZoneTable& zones) {
    constexpr int done = 100;
    const icalproperty_status status = statusOf(component);
    item.isCancelled = status == ICAL_STATUS_CANCELLED;
    item.completedAt = firstUniversalTimeOf(component, ICAL_COMPLETED_PROPERTY, zones);
    const int percent = numberOf(firstPropertyOf(component, ICAL_PERCENTCOMPLETE_PROPERTY));
    item.isCompleted = item.kind == ItemKind::ToDo &&
                       (status == ICAL_STATUS_COMPLETED || item.completedAt || percent >= done);
    item.priority = numberOf(firstPropertyOf(component, ICAL_PRIORITY_PROPERTY));
}

/// An override whose RECURRENCE-ID is damaged would pass for a series: the parser takes the
/// property away and leaves word.
bool lostItsRecurrenceId(const CalendarItem& item, const std::vector<std::string>& parseErrors) {
    return !item.recurrenceId &&
           std::any_of(parseErrors.begin(), parseErrors.end(), [](const std::string& error) {
               return error.find("in RECURRENCE-ID property") != std::string::npos;
           });
}

std::string whyUnusable(const CalendarItem& item, icalcomponent* component,
                        const std::vector<std::string>& parseErrors) {
    if (item.kind == ItemKind::Event && !item.start) {
        return "has no usable DTSTART";
    }
    const bool isOverride = firstPropertyOf(component, ICAL_RECURRENCEID_PROPERTY) != nullptr;
    const bool isLost =
        (isOverride && !item.recurrenceId) || lostItsRecurrenceId(item, parseErrors);
    return isLost ? "has no usable RECURRENCE-ID" : "";
}

} // namespace

ReadItem readItem(const ComponentBlock& block, ZoneTable& zones) {
    ReadItem result;
    const ComponentPointer component = parsedComponent(block.text);
    if (!component) {
        result.problems.emplace_back("cannot be read");
        return result;
    }
    CalendarItem item;
    item.kind = block.name == "VTODO" ? ItemKind::ToDo : ItemKind::Event;
    item.line = block.line;
    readTexts(component.get(), item);
    readTimes(component.get(), item, zones);
    readRecurrence(component.get(), item.recurrence, zones);
    readState(component.get(), item, zones);
    item.alarms = alarmsOf(component.get(), zones);
    result.problems = parseErrorsOf(component.get());
    const std::string reason = whyUnusable(item, component.get(), result.problems);
    if (reason.empty()) {
        result.item = std::move(item);
    } else {
        result.problems.push_back(reason + "; it is left out");
    }
    return result;
}

} // namespace plenzo
