#include "quick/quick_entry_table.h"

#include "host/ical/zone_table.h"

#include <fstream>
#include <sstream>

namespace plenzo {

namespace {

SystemSeconds instantOf(const std::string& text) {
    SystemSeconds result;
    cctz::parse("%Y-%m-%dT%H:%M:%S%Ez", text, cctz::utc_time_zone(), &result);
    return result;
}

std::string trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? ""
                                      : text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

QuickEntryRow tableLine(const std::string& line) {
    QuickEntryRow result;
    std::istringstream fields(line);
    std::string field;
    std::getline(fields, field, '|');
    result.text = trimmed(field);
    for (int each = 0; each < 6; ++each) {
        field.clear();
        std::getline(fields, field, '|');
        result.expected += " | " + trimmed(field);
    }
    return result;
}

void readPresent(const std::string& line, QuickEntryRow& present) {
    std::istringstream words(line);
    std::string word;
    std::string now;
    std::string order;
    words >> word >> now >> present.zoneName >> order;
    present.context.now = instantOf(now);
    present.context.zone = CalendarZone(systemZoneNamed(present.zoneName).value());
    present.context.order =
        order == "day-first" ? DayMonthOrder::DayFirst : DayMonthOrder::MonthFirst;
}

} // namespace

std::vector<QuickEntryRow> quickEntryTable() {
    std::vector<QuickEntryRow> rows;
    QuickEntryRow present;
    std::ifstream file(PLENZO_TEST_DATA "/quick_entries.txt");
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.starts_with("now ")) {
            readPresent(line, present);
        } else if (!line.empty() && line.front() != '#') {
            rows.push_back(tableLine(line));
            rows.back().line = number;
            rows.back().context = present.context;
            rows.back().zoneName = present.zoneName;
        }
    }
    return rows;
}

std::string timeText(const std::optional<CalendarTime>& time) {
    if (!time) {
        return {};
    }
    const std::string day = cctz::format(
        "%Y-%m-%d", cctz::convert(time->local, cctz::utc_time_zone()), cctz::utc_time_zone());
    return time->form == TimeForm::Date
               ? day
               : cctz::format("%Y-%m-%dT%H:%M", cctz::convert(time->local, cctz::utc_time_zone()),
                              cctz::utc_time_zone());
}

/// As the table of entries writes it.
std::string lineOf(const QuickEntry& entry) {
    const std::string fields[] = {entry.kind == ItemKind::Event ? "event" : "to-do",
                                  entry.title,
                                  timeText(entry.start),
                                  timeText(entry.end),
                                  entry.recurrenceRule,
                                  entry.location};
    std::string line;
    for (const std::string& field : fields) {
        line += " | " + field;
    }
    return line;
}

} // namespace plenzo
