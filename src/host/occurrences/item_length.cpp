#include "host/occurrences/item_length.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr std::int64_t daySeconds = 86400;

bool haveLocalLength(const CalendarTime& start, const CalendarTime& end) {
    return start.form == end.form && start.form != TimeForm::Zoned;
}

CalendarTime movedByExactSeconds(const CalendarTime& start, std::int64_t seconds,
                                 const CalendarZone& systemZone) {
    const CalendarZone& zone = zoneOf(start, systemZone);
    return movedTo(start, zone.localOf(zone.instantOf(start.local) + cctz::seconds(seconds)));
}

/// The end by the item's own DTSTART and DTEND.
CalendarTime endByLength(const CalendarItem& item, const CalendarTime& start,
                         const CalendarZone& systemZone) {
    if (start.form == TimeForm::Date) {
        const auto days = cctz::civil_day(item.end->local) - cctz::civil_day(item.start->local);
        const std::int64_t least = item.kind == ItemKind::Event ? 1 : 0;
        return movedTo(start, addDays(start.local, std::max<std::int64_t>(days, least)));
    }
    if (haveLocalLength(*item.start, *item.end)) {
        const std::int64_t seconds = item.end->local - item.start->local;
        return movedTo(start, start.local + std::max<std::int64_t>(seconds, 0));
    }
    const auto length = instantOf(*item.end, systemZone) - instantOf(*item.start, systemZone);
    return movedByExactSeconds(start, std::max<std::int64_t>(length.count(), 0), systemZone);
}

CalendarTime endByDuration(const CalendarDuration& duration, const CalendarTime& start,
                           const CalendarZone& systemZone) {
    if (start.form == TimeForm::Date) {
        const std::int64_t days = duration.days + duration.seconds / daySeconds;
        return movedTo(start, addDays(start.local, std::max<std::int64_t>(days, 1)));
    }
    const CalendarZone& zone = zoneOf(start, systemZone);
    const SystemSeconds begin = zone.instantOf(start.local);
    return movedTo(start, zone.localOf(std::max(begin, movedBy(begin, duration, zone))));
}

} // namespace

std::optional<CalendarTime> endOf(const CalendarItem& item, const CalendarTime& start,
                                  const CalendarZone& systemZone) {
    if (item.end && item.start) {
        return endByLength(item, start, systemZone);
    }
    if (item.duration) {
        return endByDuration(*item.duration, start, systemZone);
    }
    if (item.kind == ItemKind::ToDo) {
        return std::nullopt;
    }
    return start.form == TimeForm::Date ? movedTo(start, addDays(start.local, 1)) : start;
}

std::int64_t lengthSeconds(const CalendarItem& item, const CalendarZone& systemZone) {
    if (!item.start) {
        return 0;
    }
    const auto end = endOf(item, *item.start, systemZone);
    return end ? (instantOf(*end, systemZone) - instantOf(*item.start, systemZone)).count() : 0;
}

} // namespace plenzo
