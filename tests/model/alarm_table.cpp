#include "model/alarm_table.h"

#include "dates/date_text.h"
#include "support/instants.h"

#include <chrono>
#include <istream>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>

namespace plenzo {

namespace {

using Words = std::smatch;

/// The whole text when it has the form, with the words in parentheses from 1 on.
std::optional<Words> match(const std::string& text, const char* form) {
    static std::map<std::string, std::regex> forms;
    Words words;
    return std::regex_match(text, words, forms.try_emplace(form, form).first->second)
               ? std::optional(words)
               : std::nullopt;
}

/// By the calendar of the standard library, whose years do not go far; it repeats after 400 years.
std::optional<Instant> momentOf(const std::string& text) {
    const auto words =
        match(text, "([+-]?\\d{4,6})-(\\d\\d)-(\\d\\d)T(\\d\\d):(\\d\\d):(\\d\\d(\\.\\d+)?)Z");
    if (!words) {
        return std::nullopt;
    }
    const auto number = [&](std::size_t word) { return std::stoi((*words)[word]); };
    const int yearOfCycle = (number(1) % 400 + 400) % 400;
    const int cycles = (number(1) - yearOfCycle) / 400;
    const std::chrono::year_month_day date(std::chrono::year(yearOfCycle),
                                           std::chrono::month(static_cast<unsigned>(number(2))),
                                           std::chrono::day(static_cast<unsigned>(number(3))));
    if (!date.ok() || number(4) > 23 || number(5) > 59 || number(6) > 59) {
        return std::nullopt;
    }
    constexpr std::chrono::sys_days reference(std::chrono::year(2001) / 1 / 1);
    const std::int64_t days =
        std::int64_t{146097} * cycles + (std::chrono::sys_days(date) - reference).count();
    return Instant(static_cast<double>(days) * 86400 + number(4) * 3600 + number(5) * 60 +
                   std::stod((*words)[6]));
}

Instant knownMoment(const std::string& text) {
    const auto moment = momentOf(text);
    return moment ? *moment : throw std::runtime_error("no time: " + text);
}

std::optional<Instant> momentOrNone(const std::string& text) {
    return text == "none" ? std::nullopt : std::optional(knownMoment(text));
}

Value valueOf(const std::string& text) {
    if (text.starts_with('"')) {
        return text.substr(1, text.size() - 2);
    }
    if (text == "yes" || text == "no") {
        return text == "yes";
    }
    if (const auto moment = momentOf(text)) {
        return moment->date();
    }
    if (match(text, "[+-]?\\d+")) {
        return std::stoll(text);
    }
    return match(text, "[+-]?\\d+\\.\\d+") ? Value(std::stod(text)) : Value(text);
}

Dictionary recordOf(std::string text) {
    Dictionary record;
    while (const auto words = match(text, " +(\\w+)=(\"[^\"]*\"|[^ \"]+)(.*)")) {
        record.set(words->str(1), valueOf(words->str(2)));
        text = words->str(3);
    }
    return text.empty() ? record : throw std::runtime_error("no record: " + text);
}

void appendReminder(Dictionary& eventDict, const Dictionary& reminder) {
    if (!eventDict.contains(keys::rem)) {
        eventDict.set(keys::rem, Array());
    }
    eventDict.findMutable(keys::rem)->mutableArray()->append(reminder);
}

/// Takes one line of the row in. Gives its first word, which tells what the row has by then.
std::string takeLine(AlarmTableRow& row, const std::string& line) {
    if (const auto words = match(line, "at (\\S+) in (\\S+)")) {
        row.context = {.now = knownMoment(words->str(1)), .systemZone = zone(words->str(2))};
    } else if (const auto issued = match(line, "issued (\\S+)")) {
        row.issueTime = knownMoment(issued->str(1));
    } else if (line == "with proximity alarms") {
        row.proximityAlarms = ProximityAlarms::IncludeAll;
    } else if (const auto event = match(line, "event( .*)?")) {
        row.eventDict = recordOf(event->str(1));
    } else if (const auto reminder = match(line, "reminder( .*)")) {
        appendReminder(row.eventDict, recordOf(reminder->str(1)));
    } else if (const auto date = match(line, "date (\\S+)")) {
        row.localDate = momentOrNone(date->str(1));
        row.carriedDate = row.localDate;
    } else if (const auto carried = match(line, "carried (\\S+)")) {
        row.carriedDate = knownMoment(carried->str(1));
    } else if (const auto alarm = match(line, "(alarm) (\\S+) day (-?\\d+) reminder (\\S+)")) {
        row.alarms.push_back(
            {momentOrNone(alarm->str(2)), std::stoll(alarm->str(3)), alarm->str(4)});
    } else if (line != "no alarms") {
        throw std::runtime_error("no line of a row");
    }
    return line.substr(0, line.find(' '));
}

AlarmTableRow takeRow(std::istream& table, const std::string& firstLine) {
    AlarmTableRow row;
    row.name = firstLine;
    std::set<std::string> parts;
    std::string line = firstLine;
    try {
        while (std::getline(table, line) && !line.empty()) {
            parts.insert(takeLine(row, line));
        }
    } catch (const std::exception& error) {
        throw std::runtime_error(row.name + ", line '" + line + "': " + error.what());
    }
    const bool expectsAlarms = parts.contains("alarm") != parts.contains("no");
    if (!parts.contains("at") || !parts.contains("event") || !parts.contains("date") ||
        !expectsAlarms) {
        throw std::runtime_error(row.name + " is not complete");
    }
    return row;
}

} // namespace

std::vector<AlarmTableRow> readAlarmTable(std::istream& table) {
    std::vector<AlarmTableRow> rows;
    for (std::string line; std::getline(table, line);) {
        if (match(line, "\\[.+\\]")) {
            rows.push_back(takeRow(table, line));
        } else if (!line.empty() && !line.starts_with('#')) {
            throw std::runtime_error("'" + line + "' is in no row");
        }
    }
    return rows;
}

void PrintTo(const ExpectedAlarm& alarm, std::ostream* stream) {
    const double seconds = alarm.fireDate ? alarm.fireDate->secondsSinceReferenceDate() : 0;
    *stream << "alarm " << (alarm.fireDate ? rfc3339String(*alarm.fireDate) : "none") << " ("
            << std::to_string(seconds) << ") day " << alarm.fireDay << " reminder "
            << alarm.reminderUid;
}

} // namespace plenzo
