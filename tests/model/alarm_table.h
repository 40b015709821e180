#pragma once

#include "model/alarm_computation.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// What a row of the golden table expects of one alarm.
struct ExpectedAlarm {
    std::optional<Instant> fireDate;
    std::int64_t fireDay = 0;
    std::string reminderUid;

    friend bool operator==(const ExpectedAlarm&, const ExpectedAlarm&) = default;
    /// In the notation of the table.
    friend void PrintTo(const ExpectedAlarm& alarm, std::ostream* stream);
};

/// One row of tests/data/alarms.txt, whose head explains the form.
struct AlarmTableRow {
    std::string name;
    AlarmContext context;
    std::optional<Instant> issueTime;
    ProximityAlarms proximityAlarms = ProximityAlarms::Exclude;
    Dictionary eventDict;

    std::optional<Instant> localDate;
    std::optional<Instant> carriedDate;
    std::vector<ExpectedAlarm> alarms;
};

/// Throws std::runtime_error, which tells the line, when the text is no such table.
std::vector<AlarmTableRow> readAlarmTable(std::istream& table);

} // namespace plenzo
