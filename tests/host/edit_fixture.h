#pragma once

#include "host/edits/calendar_edits.h"
#include "host/occurrences/occurrence_expansion.h"
#include "host/store/calendar_set.h"

#include <string>
#include <vector>

namespace plenzo {

/// A set with the text as its only calendar: "c" in the file "/c.ics".
CalendarSet setOf(const std::string& text);

/// Edits happen at this instant, in Europe/Berlin; new UIDs are "new-1", "new-2".
EditContext editContext(const std::string& now);

/// The alarm of that reminder "uid" in the text, which must be there.
AlarmTarget alarmTarget(const std::string& text, const std::string& reminderUid);
OccurrenceTarget occurrenceTarget(const std::string& text, const std::string& eventUid);

/// "OCCURRENCE at TIME" in UTC for every alarm of the text that goes off in the window: not those
/// that are acknowledged.
std::vector<std::string> firingsIn(const std::string& text, const ExpansionWindow& window);
std::vector<std::string> firingsIn(const Calendar& calendar, const ExpansionWindow& window);

/// The reminder "uid"s in the window.
std::vector<std::string> reminderUidsIn(const std::string& text, const ExpansionWindow& window);

} // namespace plenzo
