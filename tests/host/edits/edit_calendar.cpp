// Edits a calendar file the way that the agent's commands do, for scripts/check-edits: another
// reader looks at what comes out on standard output.
//
//   edit_calendar list FILE NOW                    the reminders' and to-dos' identifiers
//   edit_calendar acknowledge FILE NOW REMINDER
//   edit_calendar snooze FILE NOW REMINDER         by an hour from NOW
//   edit_calendar complete FILE NOW TO-DO

#include "host/edits/calendar_edits.h"
#include "host/edits/command_targets.h"
#include "host/files/file_text.h"
#include "host/ical/zone_table.h"
#include "host/store/calendar_records.h"
#include "propertylist/dictionary.h"

#include <cstdio>
#include <string>

namespace {

using namespace plenzo;

constexpr int days = 40;

void printIdentifiers(const CalendarSet& set, const EditContext& context) {
    const ExpansionWindow window = expansionWindow(context.now, days, context.systemZone);
    for (const Value& value : calendarRecords(set.calendars[0], window).records) {
        const Dictionary& record = *value.dictionary();
        if (record.integerForKey("type") == 1 && !record.boolForKey("completed")) {
            std::printf("complete %s\n", std::string(*record.stringForKey("uid")).c_str());
        }
        const Array* reminders = record.arrayForKey("rem");
        for (std::size_t index = 0; reminders != nullptr && index < reminders->size(); ++index) {
            const auto uid = (*reminders)[index].dictionary()->stringForKey("uid");
            std::printf("acknowledge %s\nsnooze %s\n", std::string(*uid).c_str(),
                        std::string(*uid).c_str());
        }
    }
}

EditResult edited(const CalendarSet& set, const std::string& command, const std::string& uid,
                  const EditContext& context) {
    const CommandTargets targets(set);
    const std::string text = readFileText(set.calendars[0].files[0]->path).text;
    if (command == "complete") {
        const auto target = targets.occurrence(uid);
        return target ? completeToDo(text, *target, Completion::Done, context)
                      : EditResult::failed("no such to-do");
    }
    const auto target = targets.alarm(uid);
    if (!target) {
        return EditResult::failed("no such alarm");
    }
    return command == "snooze"
               ? snoozeAlarm(text, *target, context.now + cctz::seconds(3600), context)
               : acknowledgeAlarm(text, *target, context);
}

} // namespace

int main(int count, char** arguments) {
    SystemSeconds now;
    if (count < 4 ||
        !cctz::parse("%Y-%m-%dT%H:%M:%SZ", arguments[3], cctz::utc_time_zone(), &now)) {
        return 2;
    }
    int uids = 0;
    const EditContext context{now, CalendarZone(systemZoneNamed("Europe/Berlin").value()),
                              [&uids] { return "new-" + std::to_string(++uids); }};
    const CalendarSet set = loadCalendars({arguments[2]});
    if (set.calendars.empty()) {
        return 2;
    }
    if (count == 4) {
        printIdentifiers(set, context);
        return 0;
    }
    const EditResult result = edited(set, arguments[1], arguments[4], context);
    std::fputs(result.error.c_str(), stderr);
    std::fwrite(result.text.data(), 1, result.text.size(), stdout);
    return result.error.empty() ? 0 : 1;
}
