#include "host/records/day_pieces.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr std::int64_t daySeconds = 86400;

/// The time's wall clock in the zone in which the days are counted.
cctz::civil_second shownLocal(const CalendarTime& time, const CalendarZone& systemZone) {
    return time.form == TimeForm::Zoned ? systemZone.localOf(time.zone.instantOf(time.local))
                                        : time.local;
}

/// A shown wall clock as a time of the form of `model`.
CalendarTime timeAt(const cctz::civil_second& shown, const CalendarTime& model,
                    const CalendarZone& systemZone) {
    return model.form == TimeForm::Zoned ? CalendarTime{TimeForm::Zoned, shown, systemZone}
                                         : movedTo(model, shown);
}

bool coversSeveralDays(const cctz::civil_second& from, const cctz::civil_second& to,
                       TimeForm form) {
    const std::int64_t longestWhole = form == TimeForm::Date ? daySeconds : daySeconds - 1;
    return to - from > longestWhole && cctz::civil_day(to - 1) > cctz::civil_day(from);
}

} // namespace

std::vector<DayPiece> dayPiecesOf(const Occurrence& occurrence, const ExpansionWindow& window) {
    const CalendarTime& start = *occurrence.start;
    const CalendarTime& end = *occurrence.end;
    const cctz::civil_second from = shownLocal(start, window.systemZone);
    const cctz::civil_second to = shownLocal(end, window.systemZone);
    if (!coversSeveralDays(from, to, start.form)) {
        return {{start, end, std::nullopt}};
    }
    const cctz::civil_day firstDay(from);
    std::vector<DayPiece> pieces;
    pieces.push_back(
        {start, timeAt(cctz::civil_second(firstDay + 1), start, window.systemZone), std::nullopt});
    const cctz::civil_day windowDay(window.systemZone.localOf(window.from));
    const cctz::civil_day lastDay = std::min(
        cctz::civil_day(to - 1), cctz::civil_day(window.systemZone.localOf(window.to)) - 1);
    for (auto day = std::max(firstDay + 1, windowDay); day <= lastDay; ++day) {
        const cctz::civil_second dayEnd = std::min(cctz::civil_second(day + 1), to);
        pieces.push_back({timeAt(cctz::civil_second(day), start, window.systemZone),
                          timeAt(dayEnd, end, window.systemZone), day});
    }
    return pieces;
}

} // namespace plenzo
