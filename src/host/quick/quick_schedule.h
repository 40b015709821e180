#pragma once

#include "host/quick/quick_parts.h"

namespace plenzo {

/// When an entry is, as QuickEntry has it.
struct QuickSchedule {
    std::optional<CalendarTime> start;
    std::optional<CalendarTime> end;
    std::string recurrenceRule;
};

/// The moments that the parts mean in that present.
QuickSchedule quickScheduleOf(const QuickParts& parts, const QuickEntryContext& context);

} // namespace plenzo
