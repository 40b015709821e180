#include "app/list_command.h"

#include "dates/calendar_date.h"
#include "linux/agent_address.h"
#include "linux/regional_settings_of_system.h"
#include "linux/wire/value_decoder.h"
#include "model/event_dict.h"

#include <sdbus-c++/sdbus-c++.h>

#include <QChar>
#include <QString>
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>

namespace plenzo {

namespace {

std::string timeText(const Dictionary& row, const TimeZone& timeZone) {
    const auto date = row.dateForKey(keys::fireDate);
    const auto fireDate = CalendarDate::calendarDateWithDate(
        date ? std::optional(Instant(*date)) : std::nullopt, timeZone);
    if (!fireDate) {
        return "-";
    }
    const DateFields fields = fireDate->fields();
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04lld-%02d-%02d %02d:%02d:%02d",
                  static_cast<long long>(fields.year), fields.month, fields.day, fields.hour,
                  fields.minute, fields.second);
    return text.data();
}

std::string actionText(const Dictionary& row) {
    switch (static_cast<ReminderType>(row.integerForKey(keys::reminderType))) {
    case ReminderType::Display:
        return "display";
    case ReminderType::Sound:
        return "sound";
    case ReminderType::Mail:
        return "mail";
    case ReminderType::NoAction:
        return "none";
    case ReminderType::Open:
        return "open";
    case ReminderType::Proximity:
        return "proximity";
    }
    return std::to_string(row.integerForKey(keys::reminderType));
}

/// In one line, so that a title can neither break the table nor steer the terminal.
std::string lineText(const Dictionary& row, const Key& key) {
    const auto text = row.stringForKey(key).value_or("-");
    auto characters =
        QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toStdU32String();
    std::replace_if(
        characters.begin(), characters.end(),
        [](char32_t character) { return QChar::isSpace(character) || !QChar::isPrint(character); },
        U' ');
    return QString::fromStdU32String(characters).toStdString();
}

/// How many columns the text takes on a terminal, counted as one for each code point.
std::size_t columns(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
        return (static_cast<unsigned char>(character) & 0xC0) != 0x80;
    }));
}

using Line = std::array<std::string, 4>;

std::string aligned(const std::vector<Line>& lines) {
    std::array<std::size_t, std::tuple_size_v<Line>> widths{};
    for (const Line& line : lines) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            widths.at(column) = std::max(widths.at(column), columns(line.at(column)));
        }
    }
    std::string table;
    for (const Line& line : lines) {
        for (std::size_t column = 0; column + 1 < line.size(); ++column) {
            const std::string& text = line.at(column);
            table += text + std::string(widths.at(column) - columns(text) + 2, ' ');
        }
        table += line.back() + "\n";
    }
    return table;
}

/// The call must not start an agent, so it is made only when there is one.
bool agentIsRunning(sdbus::IConnection& connection) {
    const auto bus =
        sdbus::createProxy(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus");
    bool hasOwner = false;
    bus->callMethod("NameHasOwner")
        .onInterface("org.freedesktop.DBus")
        .withArguments(std::string(agentaddress::busName))
        .storeResultsTo(hasOwner);
    return hasOwner;
}

std::optional<Array> askForPendingAlarms(sdbus::IConnection& connection) {
    const auto agent =
        sdbus::createProxy(connection, agentaddress::busName, agentaddress::objectPath);
    auto call = agent->createMethodCall(agentaddress::inspectorInterface, "PendingAlarms");
    auto reply = agent->callMethod(call);
    return readDictionaries(reply);
}

int fail(const std::string& reason) {
    std::fprintf(stderr, "plenzoalarm: %s\n", reason.c_str());
    return 1;
}

} // namespace

int listPendingAlarms() {
    try {
        const auto connection = sdbus::createSessionBusConnection();
        if (!agentIsRunning(*connection)) {
            return fail("not running");
        }
        const auto rows = askForPendingAlarms(*connection);
        if (!rows) {
            return fail("the agent gave no readable answer");
        }
        const auto table = pendingAlarmsTable(*rows, RegionalSettingsOfSystem().timeZone());
        const bool isWritten = std::fputs(table.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
        return isWritten ? 0 : fail("the table could not be written");
    } catch (const sdbus::Error& error) {
        return fail(error.getMessage());
    }
}

std::string pendingAlarmsTable(const Array& rows, const TimeZone& timeZone) {
    std::vector<Line> lines{{"FIRES (" + timeZone.name() + ")", "ACTION", "TITLE", "UID"}};
    for (const Value& value : rows) {
        if (const Dictionary* row = value.dictionary()) {
            lines.push_back({timeText(*row, timeZone), actionText(*row),
                             lineText(*row, keys::title), lineText(*row, keys::uid)});
        }
    }
    return aligned(lines);
}

} // namespace plenzo
