#include "host/store/calendar_set.h"

#include "host/store/calendar_store.h"

namespace plenzo {

CalendarSet loadCalendars(const std::vector<std::string>& paths) {
    CalendarStore store;
    store.setSources({{paths, {}, {}, false}});
    store.update({});
    return store.calendars();
}

} // namespace plenzo
