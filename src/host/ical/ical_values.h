#pragma once

#include "host/ical/calendar_item.h"
#include "host/ical/zone_table.h"

#include <libical/ical.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// libical's structures read as values of ours. Every reader looks at the kind of a value before it
/// touches it: a file can give any property any kind.

struct ComponentDeleter {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using ComponentPointer = std::unique_ptr<icalcomponent, ComponentDeleter>;

/// The component of a text from BEGIN to END; null when there is none.
ComponentPointer parsedComponent(std::string_view text);

std::vector<icalproperty*> propertiesOf(icalcomponent* component, icalproperty_kind kind);
icalproperty* firstPropertyOf(icalcomponent* component, icalproperty_kind kind);

/// The text of a TEXT, URI, calendar address or extension value with its escapes undone, without
/// white space around it; empty for any other kind.
std::string textOf(const icalproperty* property);

/// The text of the first property of that kind, or empty.
std::string firstTextOf(icalcomponent* component, icalproperty_kind kind);

/// Nothing for a value that is no date or date-time, or no date of the calendar in the years 1 to
/// 9999. The zone is that of the property's TZID; an unknown one makes the time floating.
std::optional<CalendarTime> timeOf(icalproperty* property, ZoneTable& zones);

/// A time that the standard wants in UTC: without a zone it is taken for UTC.
std::optional<SystemSeconds> universalTimeOf(icalproperty* property, ZoneTable& zones);

/// Nothing for another kind of value or a duration of more than a hundred years.
std::optional<CalendarDuration> durationOf(const icalproperty* property);

/// A period with its start in the zone of the property's TZID; nothing for another kind of value.
std::optional<ExtraDate> periodOf(icalproperty* property, ZoneTable& zones);

/// The text of a recurrence rule, or empty.
std::string ruleTextOf(const icalproperty* property);

/// The address of a "mailto:" value, or empty.
std::string mailAddressOf(const icalproperty* property);

icalproperty_status statusOf(icalcomponent* component);

/// Nothing where the value is no date of the calendar.
std::optional<CalendarTime> calendarTimeOf(const icaltimetype& time,
                                           const std::optional<CalendarZone>& zone);
std::optional<CalendarDuration> calendarDurationOf(const icaldurationtype& duration);

/// A number value, or 0.
int numberOf(const icalproperty* property);

/// What the parser found wrong in the component itself, without its parts; empty properties are not
/// wrong.
std::vector<std::string> parseErrorsOf(icalcomponent* component);

} // namespace plenzo
