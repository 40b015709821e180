#include "host/agent_push.h"

#include "host/calendar_records.h"
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

} // namespace

AgentPush agentPush(const CalendarSet& set, const ExpansionWindow& window) {
    AgentPush push;
    push.preferences = {{Key("alarmsIssueAlarms"), true},
                        {Key("alarmsUseNotificationCenter"), false}};
    push.sourceList = sourceListOf(set.calendars);
    push.problems = set.problems;
    for (const Calendar& calendar : set.calendars) {
        CalendarRecords records = calendarRecords(calendar, window);
        for (const Value& record : records.records) {
            push.events.append(record);
        }
        for (const std::string& problem : records.problems) {
            push.problems.push_back("calendar \"" + calendar.title + "\", " + problem);
        }
    }
    return push;
}

Dictionary pushAsDictionary(const AgentPush& push) {
    return {{Key("preferences"), push.preferences},
            {Key("calendars"), push.sourceList},
            {Key("events"), push.events}};
}

} // namespace plenzo
