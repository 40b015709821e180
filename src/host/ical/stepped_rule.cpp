#include "host/ical/stepped_rule.h"

#include "host/ical/step_parts.h"

#include <algorithm>

namespace plenzo {

namespace {

std::int64_t unitSeconds(icalrecurrencetype_frequency frequency) {
    switch (frequency) {
    case ICAL_WEEKLY_RECURRENCE:
        return 7 * std::int64_t{86400};
    case ICAL_DAILY_RECURRENCE:
        return 86400;
    case ICAL_HOURLY_RECURRENCE:
        return 3600;
    case ICAL_MINUTELY_RECURRENCE:
        return 60;
    default:
        return 1;
    }
}

/// The start of the week that the start lies in, at its time of day; for shorter steps the start.
cctz::civil_second firstStep(const icalrecurrencetype& parts, const cctz::civil_second& start) {
    if (parts.freq != ICAL_WEEKLY_RECURRENCE) {
        return start;
    }
    const int mondayOfLibrary = ICAL_MONDAY_WEEKDAY; // 2; Monday of the civil week is 0
    const int weekday = static_cast<int>(cctz::get_weekday(cctz::civil_day(start)));
    return addDays(start, -((weekday + mondayOfLibrary - parts.week_start + 7) % 7));
}

/// How many steps lie before the span and need not be taken: those of the week before it are always
/// taken, for a step may expand within its week.
std::int64_t stepsToSkip(const cctz::civil_second& start, const CivilSpan& span,
                         std::int64_t strideSeconds) {
    return std::max<std::int64_t>(0, (addDays(span.from, -7) - start) / strideSeconds);
}

} // namespace

bool goesBySteps(const icalrecurrencetype& parts) {
    return parts.freq <= ICAL_WEEKLY_RECURRENCE;
}

std::vector<cctz::civil_second> steppedTimes(const icalrecurrencetype& parts,
                                             const cctz::civil_second& start, const CivilSpan& span,
                                             ExpansionBudget& budget) {
    const StepParts by(parts, start);
    const cctz::civil_second first = firstStep(parts, start);
    const std::int64_t stride = unitSeconds(parts.freq) * std::max<std::int64_t>(parts.interval, 1);
    const bool maySkip = parts.count == 0 || by.isPlain();
    const std::int64_t skipped = maySkip ? stepsToSkip(first, span, stride) : 0;
    std::int64_t left = parts.count == 0 ? INT64_MAX : parts.count - skipped;
    std::vector<cctz::civil_second> found;
    const cctz::civil_second end = addDays(span.to, 1);
    for (auto step = first + skipped * stride; step < end && left > 0; step += stride) {
        const auto times = by.timesOf(step);
        budget.steps -= static_cast<std::int64_t>(times.size()) + 1;
        for (const cctz::civil_second& time : times) {
            if (time >= start && left-- > 0 && time >= span.from && time < span.to) {
                --budget.times;
                found.push_back(time);
            }
        }
        if (budget.isSpent()) {
            break;
        }
    }
    return found;
}

} // namespace plenzo
