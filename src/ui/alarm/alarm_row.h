#pragma once

#include "core/alarm_date_text.h"
#include "model/alarm.h"
#include "propertylist/value_type.h"

#include <cstdint>
#include <optional>
#include <string>

namespace plenzo {

/// What the alarm window shows of one fired alarm.
struct AlarmRow {
    /// Of this row and, as long as the program runs, no other.
    std::uint64_t row = 0;
    Alarm alarm;
    std::string title;
    /// Where the occurrence takes place, or else its notes; empty when it has neither.
    std::string location;
    /// Of the calendar; the row is selected in it.
    std::optional<Color> color;
    std::string calendar;
    /// When it takes place, such as "Tomorrow at 9:30 AM".
    std::string date;
    bool isToDo = false;
    bool done = false;
    /// Its calendar cannot be changed, so it cannot be completed.
    bool readOnly = false;
    bool lastRow = false;
};

/// The row of an alarm, which has an event. Title, date and so on are copies.
[[nodiscard]] AlarmRow alarmRow(std::uint64_t row, const Alarm& alarm,
                                const AlarmDateText& dateText);

} // namespace plenzo
