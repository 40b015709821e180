#include "model/alarm_order.h"

namespace plenzo {

namespace {

/// No priority sorts after 1 to 99.
std::int64_t sortingPriority(const Alarm& alarm) {
    constexpr std::int64_t noPriority = 100;
    const std::int64_t priority = alarm.eventInteger(keys::priority);
    return priority == 0 ? noPriority : priority;
}

/// Those with the property come first.
std::weak_ordering firstThoseWith(bool left, bool right) {
    return right <=> left;
}

} // namespace

std::weak_ordering compare(const Alarm& left, const Alarm& right, const TitleOrder& titles) {
    if (const auto order = left.fireDay <=> right.fireDay; std::is_neq(order)) {
        return order;
    }
    if (const auto order =
            firstThoseWith(left.eventBool(keys::holiday), right.eventBool(keys::holiday));
        std::is_neq(order)) {
        return order;
    }
    if (const auto order = left.eventInteger(keys::type) <=> right.eventInteger(keys::type);
        std::is_neq(order)) {
        return order;
    }
    if (const auto order =
            firstThoseWith(left.eventBool(keys::allDay), right.eventBool(keys::allDay));
        std::is_neq(order)) {
        return order;
    }
    if (const auto order = fireInstant(left) <=> fireInstant(right); std::is_neq(order)) {
        return order;
    }
    if (const auto order = sortingPriority(left) <=> sortingPriority(right); std::is_neq(order)) {
        return order;
    }
    return titles.compare(left.eventText(keys::title), right.eventText(keys::title));
}

std::weak_ordering compareFireDate(const Alarm& left, const Alarm& right,
                                   const TitleOrder& titles) {
    if (const auto order = fireInstant(left) <=> fireInstant(right); std::is_neq(order)) {
        return order;
    }
    return compare(FireDateTie(left), FireDateTie(right), titles);
}

FireDateTie::FireDateTie(const Dictionary& eventDict, std::int64_t day)
    : eventType(eventDict.integerForKey(keys::type)),
      title(eventDict.stringForKey(keys::title).value_or(std::string_view())), fireDay(day) {}

std::weak_ordering compare(const FireDateTie& left, const FireDateTie& right,
                           const TitleOrder& titles) {
    if (const auto order = left.eventType <=> right.eventType; std::is_neq(order)) {
        return order;
    }
    if (const auto order = titles.compare(left.title, right.title); std::is_neq(order)) {
        return order;
    }
    return left.fireDay <=> right.fireDay;
}

} // namespace plenzo
