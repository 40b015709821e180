#include "host/occurrences/date_marks.h"

namespace plenzo {

namespace {

std::int64_t dayNumber(const CalendarTime& time) {
    return cctz::civil_day(time.local) - cctz::civil_day(1970, 1, 1);
}

} // namespace

DateMarks::DateMarks(const CalendarTime& seriesStart, const CalendarZone& systemZone)
    : m_seriesStart(seriesStart), m_systemZone(systemZone) {}

void DateMarks::add(const CalendarTime& mark) {
    if (mark.form == TimeForm::Date || m_seriesStart.form == TimeForm::Date) {
        m_days.insert(dayNumber(mark));
    } else {
        m_instants.insert(instantSecondsOf(mark));
    }
}

bool DateMarks::contains(const CalendarTime& start) const {
    return m_days.contains(dayNumber(start)) ||
           (start.form != TimeForm::Date && m_instants.contains(instantSecondsOf(start)));
}

std::int64_t DateMarks::instantSecondsOf(const CalendarTime& time) const {
    const CalendarZone& zone =
        zoneOf(time.form == TimeForm::Zoned ? time : m_seriesStart, m_systemZone);
    return unixSecondsOf(zone.instantOf(time.local));
}

} // namespace plenzo
