#pragma once

#include "host/edits/content_lines.h"
#include "host/ical/calendar_time.h"

#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// A line for `time` with the parameters and the form of `model`: a property of the same component
/// or series, whose value is `modelTime`. Nothing when one is a date and the other is not.
std::optional<std::string> timeLine(std::string_view name, const CalendarTime& time,
                                    const ContentLine& model, const CalendarTime& modelTime);

/// "20260312T100000Z".
std::string universalTimeText(SystemSeconds instant);

/// Sets DTSTAMP and LAST-MODIFIED.
void markChanged(ContentComponent& component, SystemSeconds now, std::string_view lineEnding);

} // namespace plenzo
