#include "model/alarm.h"

#include "model/title_order.h"

#include <limits>

namespace plenzo {

namespace {

std::string_view title(const Alarm& alarm) {
    return alarm.eventDict->stringForKey(keys::title).value_or(std::string_view());
}

std::int64_t eventType(const Alarm& alarm) {
    return alarm.eventDict->integerForKey(keys::type);
}

/// NaN is before every other instant.
constexpr Instant beforeAll(std::numeric_limits<double>::quiet_NaN());

Instant fireInstant(const Alarm& alarm) {
    return alarm.fireDate ? alarm.fireDate->instant() : beforeAll;
}

} // namespace

std::weak_ordering compareFireDate(const Alarm& left, const Alarm& right,
                                   const TitleOrder& titles) {
    if (const auto order = fireInstant(left) <=> fireInstant(right); std::is_neq(order)) {
        return order;
    }
    if (const auto order = eventType(left) <=> eventType(right); std::is_neq(order)) {
        return order;
    }
    if (const auto order = titles.compare(title(left), title(right)); std::is_neq(order)) {
        return order;
    }
    return left.fireDay <=> right.fireDay;
}

} // namespace plenzo
