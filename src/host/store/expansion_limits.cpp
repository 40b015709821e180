#include "host/store/expansion_limits.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr ExpansionBudget ofCalendar{1'000'000, 30'000};
constexpr std::int64_t timesOfItem = 100;
constexpr ExpansionBudget mostOfSeries{400'000, 10'000};
constexpr ExpansionBudget leastOfSeries{400, 100}; // however costly the ones before it were

bool isSame(const ExpansionBudget& left, const ExpansionBudget& right) {
    return left.steps == right.steps && left.times == right.times;
}

bool isLess(const ExpansionBudget& left, const ExpansionBudget& right) {
    return left.steps < right.steps && left.times < right.times;
}

} // namespace

ExpansionBudget plus(const ExpansionBudget& left, const ExpansionBudget& right) {
    return {left.steps + right.steps, left.times + right.times};
}

ExpansionBudget minus(const ExpansionBudget& left, const ExpansionBudget& right) {
    return {left.steps - right.steps, left.times - right.times};
}

ExpansionBudget calendarBudget(std::size_t itemCount) {
    return plus(ofCalendar, {0, timesOfItem * static_cast<std::int64_t>(itemCount)});
}

ExpansionBudget seriesBudget(const ExpansionBudget& left) {
    return {std::clamp(left.steps, leastOfSeries.steps, mostOfSeries.steps),
            std::clamp(left.times, leastOfSeries.times, mostOfSeries.times)};
}

bool isAmple(const ExpansionBudget& left) {
    return left.steps >= mostOfSeries.steps && left.times >= mostOfSeries.times;
}

bool wouldBeSame(const ExpansionCost& cost, const ExpansionBudget& left) {
    if (!cost.isOneSeries) {
        return isSame(cost.left, left) ||
               (isAmple(minus(cost.left, cost.used)) && isAmple(minus(left, cost.used)));
    }
    const ExpansionBudget allowed = seriesBudget(left);
    return isSame(seriesBudget(cost.left), allowed) ||
           (!cost.isSpent && isLess(cost.used, allowed));
}

} // namespace plenzo
