#pragma once

#include "host/ical/calendar_time.h"

#include <cstdint>
#include <unordered_set>

namespace plenzo {

/// A set of times that name instances of one series, as EXDATE and RECURRENCE-ID do. A time names
/// the instance that starts at that instant; a date names every instance of that local day, and in
/// an all-day series a time names its day. A time without a zone is read in the series' zone.
class DateMarks {
public:
    DateMarks(const CalendarTime& seriesStart, const CalendarZone& systemZone);

    void add(const CalendarTime& mark);
    bool contains(const CalendarTime& start) const;

private:
    std::int64_t instantSecondsOf(const CalendarTime& time) const;

    CalendarTime m_seriesStart;
    CalendarZone m_systemZone;
    std::unordered_set<std::int64_t> m_days;
    std::unordered_set<std::int64_t> m_instants;
};

} // namespace plenzo
