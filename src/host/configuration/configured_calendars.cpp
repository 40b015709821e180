#include "host/configuration/configured_calendars.h"

#include "host/store/calendar_store.h"

namespace plenzo {

std::vector<CalendarSource> configuredSources(const Configuration& configuration) {
    std::vector<CalendarSource> sources;
    for (const ConfiguredCalendar& calendar : configuration.calendars) {
        sources.push_back({{calendar.path}, calendar.title, calendar.color, calendar.isReadOnly});
    }
    return sources;
}

CalendarSet loadConfiguredCalendars(const Configuration& configuration) {
    CalendarStore store;
    store.setSources(configuredSources(configuration));
    store.update({});
    return store.calendars();
}

} // namespace plenzo
