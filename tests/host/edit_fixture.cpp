#include "edit_fixture.h"

#include "calendar_fixture.h"
#include "host/edits/command_targets.h"
#include "host/ical/zone_table.h"
#include "host/records/agent_date.h"
#include "host/store/calendar_records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace plenzo {

namespace {

/// The instant that a record's date stands for: days and floating times are wall clocks in UTC.
SystemSeconds startOf(const Dictionary& record, const CalendarZone& systemZone) {
    const SystemSeconds date = instant(dateText(record, "date") + ":00Z");
    const cctz::civil_second local = CalendarZone().localOf(date);
    if (record.boolForKey("allDay")) {
        return systemZone.instantOf(cctz::civil_second(cctz::civil_day(local)));
    }
    return record.boolForKey("floating") ? systemZone.instantOf(local) : date;
}

/// Calls for every reminder of every record in the window.
template <typename Visitor>
void visitReminders(const Calendar& calendar, const ExpansionWindow& window, Visitor visit) {
    const CalendarRecords records = calendarRecords(calendar, window);
    for (const Value& value : records.records) {
        const Dictionary& record = *value.dictionary();
        const Array* reminders = record.arrayForKey("rem");
        for (std::size_t index = 0; reminders != nullptr && index < reminders->size(); ++index) {
            visit(record, *(*reminders)[index].dictionary());
        }
    }
}

} // namespace

CalendarSet setOf(const std::string& text) {
    return {{calendarOfText(text)}, {}};
}

EditContext editContext(const std::string& now) {
    const auto count = std::make_shared<int>(0);
    return {instant(now), CalendarZone(systemZoneNamed("Europe/Berlin").value()),
            [count] { return "new-" + std::to_string(++*count); }};
}

AlarmTarget alarmTarget(const std::string& text, const std::string& reminderUid) {
    const CalendarSet set = setOf(text);
    const auto target = CommandTargets(set).alarm(reminderUid);
    EXPECT_TRUE(target) << reminderUid;
    return target.value_or(AlarmTarget());
}

OccurrenceTarget occurrenceTarget(const std::string& text, const std::string& eventUid) {
    const CalendarSet set = setOf(text);
    const auto target = CommandTargets(set).occurrence(eventUid);
    EXPECT_TRUE(target) << eventUid;
    return target.value_or(OccurrenceTarget());
}

std::vector<std::string> firingsIn(const std::string& text, const ExpansionWindow& window) {
    return firingsIn(setOf(text).calendars[0], window);
}

std::vector<std::string> firingsIn(const Calendar& calendar, const ExpansionWindow& window) {
    std::vector<std::string> firings;
    visitReminders(calendar, window, [&](const Dictionary& record, const Dictionary& entry) {
        const auto absolute = entry.dateForKey("abs");
        const auto relative = cctz::seconds(entry.integerForKey("rel"));
        const Date at = absolute.value_or(agentDate(startOf(record, window.systemZone) + relative));
        const auto acknowledged = entry.dateForKey("ack");
        if (!acknowledged ||
            at.secondsSinceReferenceDate >= acknowledged->secondsSinceReferenceDate) {
            firings.push_back(dateText(record, "date") + " at " +
                              dateText(Dictionary{{"at", at}}, "at"));
        }
    });
    std::sort(firings.begin(), firings.end());
    return firings;
}

std::vector<std::string> reminderUidsIn(const std::string& text, const ExpansionWindow& window) {
    std::vector<std::string> uids;
    const Calendar calendar = setOf(text).calendars[0];
    visitReminders(calendar, window, [&](const Dictionary&, const Dictionary& entry) {
        uids.emplace_back(entry.stringForKey("uid").value_or(""));
    });
    return uids;
}

} // namespace plenzo
