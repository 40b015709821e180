#pragma once

#include "host/recurrence_rule.h"

namespace plenzo {

/// The times of a rule that repeats by hours, minutes or seconds. They are stepped through here
/// because a rule of that kind may have billions of steps before the span: where nothing has to be
/// counted they are skipped by arithmetic. BYSETPOS is not heeded.
std::vector<cctz::civil_second> subDailyTimes(const icalrecurrencetype& parts,
                                              const cctz::civil_second& start,
                                              const CivilSpan& span, ExpansionBudget& budget);

bool isSubDaily(const icalrecurrencetype& parts);

} // namespace plenzo
