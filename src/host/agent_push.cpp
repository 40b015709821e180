#include "host/agent_push.h"

#include "propertylist/known_keys.h"

namespace plenzo {

namespace {

Dictionary calendarNode(const Calendar& calendar) {
    return {{keys::uid, calendar.uid},
            {keys::title, calendar.title},
            {keys::header, false},
            {keys::visible, true},
            {keys::colInt, calendar.color}};
}

} // namespace

Array sourceListOf(const std::vector<Calendar>& calendars) {
    Array children;
    for (const Calendar& calendar : calendars) {
        children.append(calendarNode(calendar));
    }
    return {Dictionary{{keys::uid, "calendars"},
                       {keys::title, "Calendars"},
                       {keys::header, true},
                       {keys::visible, true},
                       {keys::children, std::move(children)}}};
}

Dictionary pushAsDictionary(const AgentPush& push) {
    return {{Key("preferences"), push.preferences},
            {Key("calendars"), push.sourceList},
            {Key("events"), push.events}};
}

} // namespace plenzo
