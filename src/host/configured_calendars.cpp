#include "host/configured_calendars.h"

#include <iterator>
#include <set>

namespace plenzo {

namespace {

void dress(Calendar& calendar, const ConfiguredCalendar& configured, bool isOnly) {
    calendar.isReadOnly = calendar.isReadOnly || configured.isReadOnly;
    calendar.color = configured.color.value_or(calendar.color);
    if (isOnly && !configured.title.empty()) {
        calendar.title = configured.title;
    }
}

} // namespace

CalendarSet loadConfiguredCalendars(const Configuration& configuration) {
    CalendarSet all;
    std::set<std::string> known;
    for (const ConfiguredCalendar& configured : configuration.calendars) {
        CalendarSet set = loadCalendars({configured.path});
        for (Calendar& calendar : set.calendars) {
            if (known.insert(calendar.uid).second) {
                dress(calendar, configured, set.calendars.size() == 1);
                all.calendars.push_back(std::move(calendar));
            }
        }
        std::move(set.problems.begin(), set.problems.end(), std::back_inserter(all.problems));
    }
    return all;
}

} // namespace plenzo
