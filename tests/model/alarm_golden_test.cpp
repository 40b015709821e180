// Compares with tests/data/alarms.txt, whose head explains the rows.

#include "dates/local_dates.h"
#include "model/alarm_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace plenzo {
namespace {

class TheGoldenTableOfAlarms : public testing::Test {
protected:
    void SetUp() override {
        std::ifstream table(PLENZO_TEST_DATA "/alarms.txt");
        ASSERT_TRUE(table);
        ASSERT_NO_THROW(m_rows = readAlarmTable(table));
        ASSERT_GE(m_rows.size(), 150U);
    }
    [[nodiscard]] const std::vector<AlarmTableRow>& rows() const { return m_rows; }

private:
    std::vector<AlarmTableRow> m_rows;
};

std::vector<ExpectedAlarm> computedAlarms(const AlarmTableRow& row) {
    const auto record = std::make_shared<Dictionary>(row.eventDict);
    std::vector<ExpectedAlarm> result;
    for (const Alarm& alarm :
         alarmsForEventDict(record, row.issueTime, row.proximityAlarms, row.context)) {
        EXPECT_EQ(alarm.eventDict, record);
        EXPECT_FALSE(alarm.carryover || alarm.isHeader());
        if (alarm.fireDate) {
            EXPECT_EQ(alarm.fireDate->timeZone(), row.context.systemZone);
        }
        const auto fireDate =
            alarm.fireDate ? std::optional(alarm.fireDate->instant()) : std::nullopt;
        result.push_back({fireDate, alarm.fireDay, std::string(alarm.reminderText(keys::uid))});
    }
    return result;
}

std::optional<Instant> computedDate(const AlarmTableRow& row, CarryForward carryForward) {
    const auto date = eventDateInLocalTime(row.eventDict, carryForward, row.context);
    return date ? std::optional(date->instant()) : std::nullopt;
}

TEST_F(TheGoldenTableOfAlarms, HasTheAlarmsOfEveryRecord) {
    for (const AlarmTableRow& row : rows()) {
        EXPECT_EQ(computedAlarms(row), row.alarms) << row.name;
    }
}

TEST_F(TheGoldenTableOfAlarms, HasTheLocalDateOfEveryRecord) {
    for (const AlarmTableRow& row : rows()) {
        EXPECT_EQ(computedDate(row, CarryForward::No), row.localDate) << row.name;
        EXPECT_EQ(computedDate(row, CarryForward::Yes), row.carriedDate) << row.name;
    }
}

TEST(AnAlarmTable, IsRefusedWhenARowIsNotInItsForm) {
    const std::string row = "[a]\nat 2026-03-10T12:00:00Z in Europe/Berlin\nevent title=\"a b\"\n"
                            "reminder uid=a\ndate none\nno alarms\n";
    std::istringstream sound("# a comment\n\n" + row);
    ASSERT_EQ(readAlarmTable(sound).size(), 1U);
    const struct {
        std::string part;
        std::string instead;
    } damages[] = {
        {"[a]\n", ""},
        {"at ", "when "},
        {"12:00:00Z", "12:00:00"},
        {"12:00:00Z", "24:00:00Z"},
        {"2026-03-10", "2026-02-29"},
        {"Europe/Berlin", "Europe/Atlantis"},
        {"event title=\"a b\"\n", ""},
        {"title=\"a b\"", "title=a b"},
        {"uid=a", "uid"},
        {"date none\n", ""},
        {"no alarms\n", ""},
        {"no alarms", "no alarms\nalarm none day 0 reminder a"},
        {"no alarms", "alarm soon day 0 reminder a"},
    };
    for (const auto& [part, instead] : damages) {
        std::string text = row;
        std::istringstream damaged(text.replace(text.find(part), part.size(), instead));
        EXPECT_THROW(readAlarmTable(damaged), std::runtime_error) << text;
    }
}

} // namespace
} // namespace plenzo
