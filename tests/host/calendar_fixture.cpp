#include "calendar_fixture.h"

#include "host/ical/zone_table.h"
#include "host/store/calendar_records.h"

#include <gtest/gtest.h>

namespace plenzo {

std::string fileAround(std::string_view components) {
    return "BEGIN:VCALENDAR\nVERSION:2.0\n" + std::string(components) + "END:VCALENDAR\n";
}

Calendar calendarOfText(std::string_view text) {
    const auto file = std::make_shared<CalendarFile>();
    file->path = "/c.ics";
    file->items = readCalendarText(text).items;
    Calendar calendar;
    calendar.uid = "c";
    calendar.title = "Test";
    calendar.files = {file};
    return calendar;
}

Calendar calendarOf(std::string_view components) {
    return calendarOfText(fileAround(components));
}

SystemSeconds instant(const std::string& text) {
    SystemSeconds result;
    EXPECT_TRUE(cctz::parse("%Y-%m-%dT%H:%M:%S%Ez", text, cctz::utc_time_zone(), &result)) << text;
    return result;
}

ExpansionWindow windowFrom(const std::string& now, int days) {
    return expansionWindow(instant(now), days,
                           CalendarZone(systemZoneNamed("Europe/Berlin").value()));
}

Array recordsOf(std::string_view components, const ExpansionWindow& window) {
    return calendarRecords(calendarOf(components), window).records;
}

std::string dateText(const Dictionary& record, std::string_view key) {
    const auto date = record.dateForKey(key);
    if (!date) {
        return {};
    }
    constexpr double referenceUnixSeconds = 978'307'200;
    const auto seconds =
        static_cast<std::int64_t>(date->secondsSinceReferenceDate + referenceUnixSeconds);
    return cctz::format("%Y-%m-%dT%H:%M", instantFromUnixSeconds(seconds), cctz::utc_time_zone());
}

std::vector<std::string> linesOf(const Array& records) {
    std::vector<std::string> lines;
    for (const Value& value : records) {
        const Dictionary& record = *value.dictionary();
        std::string line = dateText(record, "date") + ' ' + dateText(record, "end") + ' ' +
                           std::string(record.stringForKey("title").value_or(""));
        line += record.boolForKey("allDay") ? " all-day" : "";
        line += record.boolForKey("floating") ? " floating" : "";
        lines.push_back(line);
    }
    return lines;
}

} // namespace plenzo
