#pragma once

#include "host/occurrences/occurrence_expansion.h"

#include <optional>
#include <vector>

namespace plenzo {

/// One day's part of an occurrence: what one record stands for.
struct DayPiece {
    CalendarTime start;
    CalendarTime end;                        // exclusive
    std::optional<cctz::civil_day> laterDay; // nothing for the first piece, else its day
};

/// An event of several days cut into its days, which begin at the system zone's midnights: those
/// within the window, and the first one always. All-day events longer than a day and timed ones of
/// 24 hours or more are cut; a shorter one that crosses midnight stays whole. The occurrence needs
/// a start and an end.
std::vector<DayPiece> dayPiecesOf(const Occurrence& occurrence, const ExpansionWindow& window);

} // namespace plenzo
