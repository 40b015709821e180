#pragma once

#include "host/quick/quick_recurrence.h"
#include "host/quick/quick_times.h"
#include "host/quick/quick_tokens.h"

#include <string>
#include <vector>

namespace plenzo {

/// A count of a unit: "90 minutes".
struct QuickAmount {
    int count = 0;
    QuickUnit unit = QuickUnit::Minute;
};

/// What the words of a quick entry say, and which of them say it.
struct QuickParts {
    ItemKind kind = ItemKind::Event;
    std::optional<QuickDay> day;
    std::optional<QuickTimes> times;
    std::optional<QuickAmount> delay;  // "in 2 hours"
    std::optional<QuickAmount> length; // "for 90 minutes"
    std::optional<QuickRecurrence> recurrence;
    std::optional<HalfOfDay> hint; // "dinner"
    std::string location;
    std::vector<bool> isTaken; // for each token: it is no part of the title
};

/// The first of each part that the tokens name.
QuickParts quickPartsOf(const QuickTokens& text, cctz::civil_day today, DayMonthOrder order);

} // namespace plenzo
