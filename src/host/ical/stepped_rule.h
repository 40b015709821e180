#pragma once

#include "host/ical/recurrence_rule.h"

namespace plenzo {

/// Whether a rule repeats by weeks, days, hours, minutes or seconds: by steps of a fixed length.
bool goesBySteps(const icalrecurrencetype& parts);

/// The times of a rule that goes by steps, in ascending order. Such a rule may have billions of
/// steps before the span; where nothing has to be counted they are skipped by arithmetic.
std::vector<cctz::civil_second> steppedTimes(const icalrecurrencetype& parts,
                                             const cctz::civil_second& start, const CivilSpan& span,
                                             ExpansionBudget& budget);

} // namespace plenzo
