#pragma once

#include "host/ical/recurrence_rule.h"

#include <cstddef>

namespace plenzo {

/// How much the series of one calendar may cost, one after the other: each takes from what those
/// before it have left, and gets a little even when that is nothing.

ExpansionBudget plus(const ExpansionBudget& left, const ExpansionBudget& right);
ExpansionBudget minus(const ExpansionBudget& left, const ExpansionBudget& right);

/// For a calendar with so many items.
ExpansionBudget calendarBudget(std::size_t itemCount);

/// For one series, out of what is left.
ExpansionBudget seriesBudget(const ExpansionBudget& left);

/// Whether a series that is given this gets all that a series may have.
bool isAmple(const ExpansionBudget& left);

/// How much one series, or several together, had and took.
struct ExpansionCost {
    ExpansionBudget left; // what it had, with those after it
    ExpansionBudget used;
    bool isOneSeries = true;
    bool isSpent = false;
};

/// Whether what was expanded at this cost would be the same had this been left.
bool wouldBeSame(const ExpansionCost& cost, const ExpansionBudget& left);

} // namespace plenzo
