// Compares with tests/data/dates_golden.tsv, which scripts/make-date-golden-table explains.

#include "dates/local_dates.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <vector>

namespace plenzo {
namespace {

using testing::IsEmpty;

struct Row {
    std::string text;
    std::vector<std::string> cells;
    TimeZone zone;
};

std::vector<std::string> splitAtTabs(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, '\t');) {
        cells.push_back(cell);
    }
    return cells;
}

/// The rows of one kind, each with the zone that it is under.
std::vector<Row> goldenRows(const std::string& kind) {
    std::ifstream table(PLENZO_TEST_DATA "/dates_golden.tsv");
    std::vector<Row> rows;
    TimeZone zone;
    for (std::string line; std::getline(table, line);) {
        const auto cells = splitAtTabs(line);
        if (cells.front() == "zone") {
            zone = zoneNamed(cells.at(1));
        } else if (cells.front() == kind) {
            rows.push_back({zone.name() + ' ' + line, cells, zone});
        }
    }
    EXPECT_GT(rows.size(), 500U) << kind;
    return rows;
}

Instant momentOf(const std::string& cell) {
    return Instant::since1970(std::stod(cell));
}

std::string textOfMoment(Instant moment) {
    return std::to_string(static_cast<long long>(moment.secondsSince1970()));
}

/// The rows that disagree, with what came instead; the first few of them.
class Disagreements {
public:
    void compare(const Row& row, const std::string& expected, const std::string& actual) {
        if (expected != actual && m_texts.size() < 20) {
            m_texts.push_back(row.text + " but: " + actual);
        }
    }
    [[nodiscard]] const std::vector<std::string>& texts() const { return m_texts; }

private:
    std::vector<std::string> m_texts;
};

TEST(CalendarFields, AgreeWithTheGoldenTable) {
    Disagreements found;
    for (const Row& row : goldenRows("instant")) {
        const Instant moment = momentOf(row.cells.at(1));
        found.compare(row, row.cells.at(2), textOf(CalendarDate(moment, row.zone)));
        found.compare(row, row.cells.at(3), std::to_string(row.zone.offsetSeconds(moment)));
        found.compare(row, row.cells.at(4), row.zone.abbreviation(moment));
        const Calendar calendar(row.zone);
        const auto weekday = calendar.componentsIncludingWeek(weekdayUnit, moment).weekday;
        found.compare(row, row.cells.at(5), std::to_string(weekday));
        const int week = calendar.isoWeekNumberForDate(moment, false);
        found.compare(row, row.cells.at(6), std::to_string(week));
    }
    EXPECT_THAT(found.texts(), IsEmpty());
}

TEST(LocalTimes, AreTheMomentsOfTheGoldenTable) {
    Disagreements found;
    for (const Row& row : goldenRows("local")) {
        const CalendarDate date = localDate(row.cells.at(1), row.zone);
        found.compare(row, row.cells.at(2), textOfMoment(date.instant()));
        const bool isSkipped = textOf(date) != row.cells.at(1);
        found.compare(row, row.cells.at(3) == "skipped" ? "1" : "0", isSkipped ? "1" : "0");
    }
    EXPECT_THAT(found.texts(), IsEmpty());
}

TEST(CalendarUnits, AddUpToTheMomentsOfTheGoldenTable) {
    Disagreements found;
    for (const Row& row : goldenRows("add")) {
        DateComponents components;
        (row.cells.at(2) == "days" ? components.day : components.month) =
            std::stoll(row.cells.at(3));
        const auto sum =
            Calendar(row.zone).dateByAddingComponents(components, momentOf(row.cells.at(1)));
        found.compare(row, row.cells.at(4), sum ? textOfMoment(*sum) : "nothing");
    }
    EXPECT_THAT(found.texts(), IsEmpty());
}

TEST(CalendarDifferences, AreThoseOfTheGoldenTableAndOneFurtherBackwards) {
    Disagreements found;
    for (const Row& row : goldenRows("between")) {
        const Instant from = momentOf(row.cells.at(1));
        const Instant to = momentOf(row.cells.at(2));
        const std::int64_t further = from > to ? 1 : 0;
        const Calendar calendar(row.zone);
        const auto days = calendar.daysFromDate(from, to) + further;
        const auto months = calendar.monthsFromDate(from, to) + further;
        found.compare(row, row.cells.at(3), std::to_string(days));
        found.compare(row, row.cells.at(4), std::to_string(months));
    }
    EXPECT_THAT(found.texts(), IsEmpty());
}

} // namespace
} // namespace plenzo
