#include "host/ical/calendar_time.h"

namespace plenzo {

namespace {

constexpr std::int64_t daySeconds = 86400;

} // namespace

const CalendarZone& zoneOf(const CalendarTime& time, const CalendarZone& systemZone) {
    return time.form == TimeForm::Zoned ? time.zone : systemZone;
}

SystemSeconds instantOf(const CalendarTime& time, const CalendarZone& systemZone) {
    return zoneOf(time, systemZone).instantOf(time.local);
}

CalendarTime movedTo(const CalendarTime& time, const cctz::civil_second& local) {
    CalendarTime moved = time;
    moved.local = local;
    return moved;
}

cctz::civil_second addDays(const cctz::civil_second& local, std::int64_t days) {
    return local + days * daySeconds; // civil seconds know no daylight saving
}

SystemSeconds movedBy(SystemSeconds instant, const CalendarDuration& duration,
                      const CalendarZone& zone) {
    if (duration.days != 0) {
        instant = zone.instantOf(addDays(zone.localOf(instant), duration.days));
    }
    return instant + cctz::seconds(duration.seconds);
}

} // namespace plenzo
