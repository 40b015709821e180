#include "calendar_fixture.h"
#include "host/configuration/configuration.h"
#include "host/configuration/configured_calendars.h"
#include "host/configuration/duration_text.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace plenzo {

namespace {

const PathOrigin origin{"/home/ana", "/etc/plenzohost"};

Configuration configurationOf(std::string_view text) {
    return readConfiguration(text, origin);
}

std::vector<std::string> problemsOf(const Configuration& configuration) {
    std::vector<std::string> texts;
    for (const ConfigurationProblem& problem : configuration.problems) {
        texts.push_back(problemText("c", problem));
    }
    return texts;
}

class AConfigurationFile : public testing::Test {
protected:
    std::string write(const std::string& name, const std::string& text) {
        std::ofstream(m_folder.file(name)) << text;
        return m_folder.file(name);
    }

    std::string event(const std::string& lines) {
        return fileAround(lines + "BEGIN:VEVENT\nUID:a\nDTSTART:20260310T100000Z\nEND:VEVENT\n");
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST(AConfiguration, NamesCalendarsWithTheirLooks) {
    const Configuration read = configurationOf(R"([[calendar]]
path = "~/work.ics"
name = "Work"
color = "#102030"
default = true
[[calendar]]
path = "shared"
color = "SteelBlue"
read-only = true
[[calendar]]
path = "/srv/~/x.ics"
)");
    EXPECT_THAT(problemsOf(read), IsEmpty());
    ASSERT_EQ(read.calendars.size(), 3U);
    EXPECT_EQ(read.calendars[0].path, "/home/ana/work.ics");
    EXPECT_EQ(read.calendars[0].title, "Work");
    EXPECT_EQ(read.calendars[0].color, 0x102030U);
    EXPECT_TRUE(read.calendars[0].isDefault);
    EXPECT_FALSE(read.calendars[0].isReadOnly);
    EXPECT_EQ(read.calendars[1].path, "/etc/plenzohost/shared");
    EXPECT_EQ(read.calendars[1].color, 0x4682B4U);
    EXPECT_TRUE(read.calendars[1].isReadOnly);
    EXPECT_FALSE(read.calendars[1].isDefault);
    EXPECT_EQ(read.calendars[2].path, "/srv/~/x.ics");
    EXPECT_FALSE(read.calendars[2].color);
}

TEST(AConfiguration, TellsTheAgentItsPreferences) {
    const Configuration read = configurationOf(R"(
[preferences]
snooze = "10 min before start"
return-snoozes = false
take-focus = true
show-menu-icon = true
show-alarms = false
use-notifications = false
days-to-show = 7
show-dated = false
show-undated = false
show-completed = false
keep-open = true
[weather]
file = "~/weather"
[quick-entry]
date-order = "month-first"
alarm = "10 min"
)");
    EXPECT_THAT(problemsOf(read), IsEmpty());
    const Dictionary expected{{Key("alarmsSnoozeSeconds"), std::int64_t{-600}},
                              {Key("alarmsSnoozeDefault"), false},
                              {Key("alarmsTakeFocus"), true},
                              {Key("alarmsShowMenuIcon"), true},
                              {Key("alarmsIssueAlarms"), false},
                              {Key("alarmsUseNotificationCenter"), false},
                              {Key("alarmsDaysToShow"), std::int64_t{7}},
                              {Key("alarmsShowDated"), false},
                              {Key("alarmsShowUndated"), false},
                              {Key("alarmsShowCompleted"), false},
                              {Key("alarmsSticky"), true}};
    EXPECT_EQ(read.preferences, expected);
    EXPECT_EQ(read.weatherFile, "/home/ana/weather");
    EXPECT_EQ(read.dayMonthOrder, DayMonthOrder::MonthFirst);
    EXPECT_EQ(read.newItemAlarmSeconds, 600);
}

TEST(AConfiguration, ThatIsEmptyShowsAlarmsInTheirWindow) {
    const Configuration read = configurationOf("");
    EXPECT_THAT(read.calendars, IsEmpty());
    const Dictionary expected{{Key("alarmsIssueAlarms"), true},
                              {Key("alarmsUseNotificationCenter"), false}};
    EXPECT_EQ(read.preferences, expected);
}

TEST(AConfiguration, NamesWhatIsWrongWithItsPlaceAndUsesTheRest) {
    const Configuration read = configurationOf(R"(colour = 1
[[calendar]]
path = "/a.ics"
color = "blurple"
default = true
nmae = "x"
[[calendar]]
name = "No path"
[[calendar]]
path = 7
[[calendar]]
path = "/b.ics"
read-only = "yes"
default = true
[preferences]
snooze = "soon"
days-to-show = 0
take-focus = 1
show-undated = false
hot-key = "x"
[weather]
file = ""
[quick-entry]
date-order = "year-first"
)");
    EXPECT_THAT(
        problemsOf(read),
        ElementsAre(
            "c:1:1: unknown key \"colour\"",
            "c:4:9: \"blurple\" is no colour: a name of CSS or \"#rrggbb\"",
            "c:6:1: unknown key \"nmae\" of a calendar", "c:7:1: the calendar has no path",
            "c:10:8: \"path\" has to be a text", "c:13:13: \"read-only\" has to be true or false",
            "c:14:1: another calendar is the default already",
            "c:16:10: \"snooze\" has to be a number of seconds, or a text like \"5 min\" or "
            "\"10 min before start\", of at most ten days",
            "c:17:16: \"days-to-show\" has to be a whole number from 1 to 366",
            "c:18:14: \"take-focus\" has to be true or false",
            "c:20:1: unknown key \"hot-key\" of the preferences",
            "c:22:8: \"file\" has to be a text",
            "c:24:14: \"date-order\" has to be \"day-first\" or \"month-first\""));
    ASSERT_EQ(read.calendars.size(), 2U);
    EXPECT_EQ(read.calendars[0].path, "/a.ics");
    EXPECT_TRUE(read.calendars[0].isDefault);
    EXPECT_EQ(read.calendars[1].path, "/b.ics");
    EXPECT_FALSE(read.calendars[1].isDefault);
    EXPECT_EQ(read.preferences.boolForKey("alarmsShowUndated"), false);
    EXPECT_TRUE(read.preferences.boolForKey("alarmsIssueAlarms"));
}

TEST(AConfiguration, LosesOnlyTheLinesThatAreNoToml) {
    const Configuration read = configurationOf(R"([[calendar]]
path = "/a.ics"
name = Work
path = "/twice.ics"
[[calendar]]
path = "/b.ics"
color = "#00ff00
)");
    ASSERT_EQ(read.problems.size(), 3U);
    EXPECT_EQ(read.problems[0].place.line, 3);
    EXPECT_EQ(read.problems[1].place.line, 4);
    EXPECT_EQ(read.problems[2].place.line, 7);
    ASSERT_EQ(read.calendars.size(), 2U);
    EXPECT_EQ(read.calendars[0].path, "/a.ics");
    EXPECT_EQ(read.calendars[1].path, "/b.ics");
}

TEST(AConfiguration, OfTheWrongShapesIsReadAllTheSame) {
    const std::pair<std::string, const char*> rows[] = {
        {"calendar = 1", "c:1:12: calendars are written as [[calendar]]"},
        {"calendar = [1]", "c:1:13: calendars are written as [[calendar]]"},
        {"[calendar]\npath = \"/a\"", "c:1:1: calendars are written as [[calendar]]"},
        {"preferences = true", "c:1:1: \"preferences\" has to be a table: [preferences]"},
        {"[preferences]\nsnooze = -9223372036854775808", "c:2:10: \"snooze\" has to be"},
        {"[preferences]\nsnooze = 1e300", "c:2:10: \"snooze\" has to be"},
        {"[preferences]\ndays-to-show = 2.5", "c:2:16: \"days-to-show\" has to be"},
        {"a = " + std::string(100'000, '['), "c:1:"},
        {std::string("\0\x01", 2), "c:1:1"},
        {"\xFF\xFE", "c:1:1"}};
    for (const auto& [text, problem] : rows) {
        const std::vector<std::string> problems = problemsOf(configurationOf(text));
        ASSERT_FALSE(problems.empty()) << text.substr(0, 40);
        EXPECT_THAT(problems[0], StartsWith(problem));
    }
    std::string manyErrors;
    for (int line = 0; line < 5000; ++line) {
        manyErrors += "= = =\n";
    }
    EXPECT_THAT(configurationOf(manyErrors).problems, testing::SizeIs(testing::Le(20)));
}

TEST(AConfiguration, SaysWhatIsNoPath) {
    const std::pair<const char*, const char*> rows[] = {
        {"~ana/work.ics", "c:2:8: \"~ana\" stands for nothing: only \"~\" does, for your home "
                          "folder; a file of that name is \"./~ana/work.ics\""},
        {"$HOME/work.ics", "c:2:8: \"$HOME\" stands for nothing: "},
        {"https://example.com/work.ics", "c:2:8: \"https://example.com/work.ics\" is no path: "},
        {"file:///home/ana/work.ics", "c:2:8: \"file:///home/ana/work.ics\" is no path: "},
        {"work.ics\\u0000", "c:2:8: a path has no zero byte"}};
    for (const auto& [path, problem] : rows) {
        const std::string entry = "path = \"" + std::string(path) + "\"\n";
        const Configuration read = configurationOf("[[calendar]]\n" + entry);
        EXPECT_THAT(problemsOf(read), ElementsAre(StartsWith(problem)));
        EXPECT_THAT(read.calendars, IsEmpty()) << path;
    }
    const Configuration homeless = readConfiguration("[weather]\nfile = \"~/w\"", {"", "/c"});
    EXPECT_THAT(problemsOf(homeless),
                ElementsAre("c:2:8: \"~\" stands for nothing: HOME is not set"));
    EXPECT_THAT(homeless.weatherFile, IsEmpty());
    const Configuration odd = configurationOf("[[calendar]]\npath = \"./~ana/$x.ics\"");
    EXPECT_THAT(problemsOf(odd), IsEmpty());
    EXPECT_EQ(odd.calendars.at(0).path, "/etc/plenzohost/./~ana/$x.ics");
}

TEST(AConfiguration, HasItsDefaultAmongTheCalendarsThatCount) {
    const Configuration read = configurationOf(R"([[calendar]]
default = true
[[calendar]]
path = "/a.ics"
default = true
read-only = true
)");
    EXPECT_THAT(problemsOf(read),
                ElementsAre("c:1:1: the calendar has no path",
                            "c:5:1: new items cannot be written: the default calendar is "
                            "read-only"));
    ASSERT_EQ(read.calendars.size(), 1U);
    EXPECT_TRUE(read.calendars[0].isDefault);
}

TEST(ADurationText, IsANumberWithAUnit) {
    const std::pair<const char*, std::optional<std::int64_t>> rows[] = {
        {"5 min", 300},      {"90 s", 90}, {"1h", 3600},
        {"2 days", 172'800}, {"0 min", 0}, {"10 min before start", -600},
        {"10 days", 864'000}};
    for (const auto& [text, seconds] : rows) {
        EXPECT_EQ(secondsOfDurationText(text), seconds) << text;
    }
    for (const char* text : {"", "5", "min", "-5 min", "5  min", "5 minx", "11 days", " 5 min",
                             " before start", "99999999999999999999 s", "5 min before starting"}) {
        EXPECT_FALSE(secondsOfDurationText(text)) << text;
    }
}

TEST_F(AConfigurationFile, NamesThePathsThatAreMissing) {
    const std::string file =
        write("config.toml", "[[calendar]]\npath = \"gone.ics\"\n[[calendar]]\npath = 1\n");
    const Configuration read = loadConfiguration(file);
    EXPECT_THAT(problemsOf(read), ElementsAre("c:2:8: there is no file or folder \"" +
                                                  m_folder.file("gone.ics") + "\"",
                                              "c:4:8: \"path\" has to be a text"));
    EXPECT_EQ(read.calendars.size(), 1U);
    EXPECT_EQ(loadConfiguration(m_folder.file("none")).problems.size(), 1U);
    EXPECT_EQ(loadConfiguration(m_folder.path().string()).problems.size(), 1U);
}

TEST_F(AConfigurationFile, GivesCalendarsItsNamesAndColors) {
    write("a.ics", event("NAME:Own\nCOLOR:red\n"));
    write("b.ics", event("NAME:Second\nCOLOR:red\n"));
    const std::string file = write("config.toml", R"(
[[calendar]]
path = "a.ics"
name = "Mine"
color = "#010203"
read-only = true
[[calendar]]
path = "."
name = "For one alone"
)");
    const CalendarSet set = loadConfiguredCalendars(loadConfiguration(file));
    ASSERT_EQ(set.calendars.size(), 2U); // a.ics is there once
    EXPECT_EQ(set.calendars[0].title, "Mine");
    EXPECT_EQ(set.calendars[0].color, 0x010203U);
    EXPECT_TRUE(set.calendars[0].isReadOnly);
    EXPECT_EQ(set.calendars[1].title, "Second");
    EXPECT_EQ(set.calendars[1].color, 0xFF0000U);
}

TEST_F(AConfigurationFile, IsNotNeededForTheUsersCalendarFolder) {
    const EnvironmentVariable data("XDG_DATA_HOME", m_folder.path().c_str());
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", "/c");
    EXPECT_EQ(defaultConfigurationPath(), "/c/plenzohost/config.toml");
    EXPECT_THAT(defaultConfiguration().calendars, IsEmpty());
    std::filesystem::create_directory(m_folder.file("calendars"));
    const Configuration found = defaultConfiguration();
    ASSERT_EQ(found.calendars.size(), 1U);
    EXPECT_EQ(found.calendars[0].path, m_folder.file("calendars"));
}

} // namespace plenzo
