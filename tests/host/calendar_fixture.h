#pragma once

#include "host/ical/calendar.h"
#include "host/ical/calendar_text.h"
#include "host/occurrences/occurrence_expansion.h"
#include "propertylist/dictionary.h"

#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// A calendar file around these components, which may be written with single line feeds.
std::string fileAround(std::string_view components);

/// The calendar "Test" of this text in the file "/c.ics"; its uid is "c".
Calendar calendarOfText(std::string_view text);

/// The same of a file around these components.
Calendar calendarOf(std::string_view components);

/// "2026-03-01T09:00:00+01:00" as an instant.
SystemSeconds instant(const std::string& text);

/// The 30 days from this instant in Europe/Berlin, or as many as given.
ExpansionWindow windowFrom(const std::string& now, int days = 30);

/// The records of the components in the window.
Array recordsOf(std::string_view components, const ExpansionWindow& window);

/// "2026-03-01T08:00" of a record's date under that key, in UTC; empty without one.
std::string dateText(const Dictionary& record, std::string_view key);

/// One line for each record: "DATE END TITLE", and "all-day" or "floating" where it is.
std::vector<std::string> linesOf(const Array& records);

} // namespace plenzo
