#include "breakable_files.h"
#include "calendar_fixture.h"
#include "host/commands/command_queue.h"
#include "host/files/file_text.h"
#include "host/ical/zone_table.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace plenzo {

namespace {

constexpr const char* scheme = "plenzoevent://";

/// The calendars of a folder, at a moment of the test's choice in Berlin.
class FolderWorld final : public CommandWorld {
public:
    explicit FolderWorld(const TemporaryFolder& folder) : m_folder(folder) {}

    const CalendarSet& calendars() override {
        m_set = loadCalendars({m_folder.file("calendars")});
        for (Calendar& calendar : m_set.calendars) {
            calendar.isReadOnly = calendar.isReadOnly || calendar.title == fixedTitle;
        }
        return m_set;
    }
    const Configuration& configuration() override { return settings; }
    std::string configurationFile() override { return m_folder.file("config/c.toml"); }
    SystemSeconds now() override { return moment; }
    CalendarZone zone() override { return CalendarZone(systemZoneNamed("Europe/Berlin").value()); }
    std::string zoneName() override { return "Europe/Berlin"; }
    void noteEdit(const std::string& calendarFile) override {
        edited.push_back(fs::path(calendarFile).filename().string());
    }

    Configuration settings;
    std::string fixedTitle = "fixed"; // of the read-only calendar
    SystemSeconds moment = instant("2026-03-12T09:00:00Z");
    std::vector<std::string> edited;

private:
    const TemporaryFolder& m_folder;
    CalendarSet m_set;
};

/// Notes what it is to show, and can whatever it is told that it can.
class NotingPresentation final : public ItemPresentation {
public:
    bool openCalendarFile(const std::string& path, const std::string& token) override {
        return note("file " + fs::path(path).filename().string() + " " + token);
    }
    bool openText(const std::string& path, const std::string& token) override {
        return note("text " + fs::path(path).filename().string() + " " + token);
    }
    bool showSummary(const ItemSummary& summary, const std::string& token) override {
        note("summary " + summary.title + " " + token);
        return true;
    }

    bool hasPrograms = true;
    std::vector<std::string> shown;

private:
    bool note(const std::string& line) {
        if (hasPrograms || line.starts_with("summary")) {
            shown.push_back(line);
        }
        return hasPrograms;
    }
};

class ACommandQueue : public testing::Test {
protected:
    ACommandQueue() {
        fs::create_directories(folder.file("calendars"));
        put("work", calendarText("work"));
        put("fixed", calendarText("fixed"));
        ConfiguredCalendar work;
        work.path = path("work");
        work.isDefault = true;
        world.settings.calendars = {work};
    }

    static std::string calendarText(const std::string& uid) {
        return fileAround("BEGIN:VEVENT\nUID:" + uid +
                          "\nDTSTART:20260312T100000Z\nSUMMARY:" + uid +
                          "\nBEGIN:VALARM\nUID:bell\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\n"
                          "END:VEVENT\nBEGIN:VTODO\nUID:" +
                          uid + "-todo\nDUE:20260312T100000Z\nEND:VTODO\n");
    }

    std::string path(const std::string& name) const {
        return folder.file("calendars/" + name + ".ics");
    }
    void put(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary | std::ios::trunc) << text;
    }
    std::string text(const std::string& name = "work") const {
        return readFileText(path(name)).text;
    }

    std::string uid(const std::string& calendar, const std::string& rest) {
        for (const Calendar& one : world.calendars().calendars) {
            if (one.title == calendar) {
                return one.uid + "~" + rest;
            }
        }
        return {};
    }
    std::string bell(const std::string& calendar) {
        return uid(calendar, calendar + "~20260312T100000Z~bell");
    }
    std::string toDo(const std::string& calendar) {
        return uid(calendar, calendar + "-todo~todo-20260312T100000Z");
    }

    void receive(const std::string& rest) { queue.receive(scheme + rest, "token"); }

    TemporaryFolder folder;
    FolderWorld world{folder};
    BreakableFiles files;
    NotingPresentation presentation;
    BreakableFiles disk;
    LocalEdits localEdits{disk, folder.file("state/local-edits"), world.zone()};
    CommandExecution execution{world, files, localEdits, presentation};
    PendingCommands pending{disk, folder.file("state/commands")};
    std::vector<std::string> told;
    UserMessages messages{
        [this](const Notice& notice) { told.push_back(notice.summary + ": " + notice.body); }};
    CommandQueue queue{world, execution, pending, messages};
};

} // namespace

TEST_F(ACommandQueue, ChangesTheFiles) {
    receive("snooze/" + bell("work") + "/" + "795013200"); // 2026-03-12T13:00:00Z
    EXPECT_THAT(text(), HasSubstr("TRIGGER;VALUE=DATE-TIME:20260312T130000Z"));
    receive("acknowledge/" + bell("work"));
    EXPECT_THAT(text(), HasSubstr("ACKNOWLEDGED:"));
    receive("edit/" + toDo("work") + "/completed/YES");
    EXPECT_THAT(text(), HasSubstr("STATUS:COMPLETED"));
    world.settings.newItemAlarmSeconds = 600;
    receive("new/Tea%20tomorrow%20at%2017%3A00");
    EXPECT_THAT(text(), HasSubstr("TRIGGER:-PT600S"));
    EXPECT_THAT(text(), HasSubstr("DTSTART;TZID=Europe/Berlin:20260313T170000"));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(pending.all(), IsEmpty());
}

TEST_F(ACommandQueue, SnoozesIntoTheFutureHoweverLateTheCommandComes) {
    for (const std::string calendar : {"work", "fixed"}) {
        receive("snooze/" + bell(calendar) + "/1000");
    }
    const std::string soon = "TRIGGER;VALUE=DATE-TIME:20260312T090002Z";
    EXPECT_THAT(text(), HasSubstr(soon));
    EXPECT_THAT(localEdits.amended(path("fixed"), text("fixed")), HasSubstr(soon));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ACommandQueue, KnowsAnAlarmByTheNameThatItHadBeforeTheLastCommand) {
    const std::string alarm = "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\n";
    put("work", fileAround("BEGIN:VEVENT\nUID:twins\nDTSTART:20260312T100000Z\n" + alarm + alarm +
                           "END:VEVENT\n"));
    std::vector<std::string> uids;
    const auto alarms = world.calendars().calendars.back().files.front()->items[0].alarms;
    for (const AlarmDefinition& one : alarms) {
        uids.push_back(uid("work", "twins~20260312T100000Z~" + one.uid));
    }
    ASSERT_EQ(uids.size(), 2U);
    receive("snooze/" + uids[0] + "/795013200");
    receive("snooze/" + uids[1] + "/795016800");
    EXPECT_THAT(text(), HasSubstr("TRIGGER;VALUE=DATE-TIME:20260312T130000Z"));
    EXPECT_THAT(text(), HasSubstr("TRIGGER;VALUE=DATE-TIME:20260312T140000Z"));
    receive("acknowledge/" + uids[0]);
    EXPECT_THAT(pending.all(), IsEmpty());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ACommandQueue, ShowsItemsAndTheConfiguration) {
    const std::string event = uid("work", "work~20260312T100000Z");
    receive("show/" + event);
    receive("info/" + event);
    presentation.hasPrograms = false;
    receive("show/" + event);
    EXPECT_THAT(presentation.shown,
                ElementsAre("file work.ics token", "summary work token", "summary work token"));
    world.settings.calendars.emplace_back().path = folder.file("it's \"\\so");
    fs::copy(path("work"), world.settings.calendars.back().path);
    receive("prefs/general");
    EXPECT_THAT(told, ElementsAre(HasSubstr("no program can open")));
    presentation.hasPrograms = true;
    receive("prefs/general");
    EXPECT_EQ(presentation.shown.back(), "text c.toml token");
    const Configuration made = loadConfiguration(folder.file("config/c.toml"));
    EXPECT_THAT(made.problems, IsEmpty());
    ASSERT_EQ(made.calendars.size(), 2U);
    EXPECT_EQ(made.calendars[0].path, path("work"));
    EXPECT_EQ(made.calendars[1].path, world.settings.calendars[1].path);
}

TEST_F(ACommandQueue, KeepsWhatCannotBeWrittenAndTellsItOnce) {
    const std::string before = text();
    files.failingStep = 0;
    receive("acknowledge/" + bell("work"));
    EXPECT_EQ(text(), before);
    EXPECT_THAT(told, ElementsAre(testing::AllOf(HasSubstr("A dismissed alarm could not be noted"),
                                                 HasSubstr("No space left on device"),
                                                 HasSubstr("tried again"))));
    EXPECT_EQ(pending.all().size(), 1U);
    PendingCommands ofNextRun(disk, folder.file("state/commands"));
    ofNextRun.load();
    EXPECT_EQ(ofNextRun.all().size(), 1U);
    queue.tryAgain();
    EXPECT_THAT(text(), HasSubstr("ACKNOWLEDGED:"));
    EXPECT_THAT(pending.all(), IsEmpty());
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(ACommandQueue, WaitsForACalendarThatIsNotThereButNotForEver) {
    const std::string url = "acknowledge/" + bell("work");
    const std::string whole = text();
    fs::remove(path("work"));
    receive(url);
    EXPECT_EQ(pending.all().size(), 1U);
    put("work", whole);
    queue.tryAgain();
    EXPECT_THAT(text(), HasSubstr("ACKNOWLEDGED:"));

    fs::remove(path("work"));
    receive(url);
    world.moment += cctz::seconds(4 * 86'400);
    queue.tryAgain();
    EXPECT_THAT(pending.all(), IsEmpty());
    EXPECT_THAT(told.back(), HasSubstr("its calendar is not there."));
}

TEST_F(ACommandQueue, RefusesWhatNeverCanBe) {
    const std::string before = text("fixed");
    receive("edit/" + toDo("fixed") + "/completed/YES");
    receive("show/nothing");
    EXPECT_EQ(text("fixed"), before);
    EXPECT_THAT(told,
                ElementsAre(HasSubstr("\"fixed\" is read-only"), HasSubstr("could not be shown")));
    EXPECT_THAT(pending.all(), IsEmpty());
}

TEST_F(ACommandQueue, LooksForAMinuteForWhatAHalfWrittenFileDoesNotHold) {
    const std::string whole = text();
    const std::string snooze = "snooze/" + bell("work") + "/795013200";
    const std::string gone = uid("work", "gone~20260312T100000Z~bell");
    put("work", calendarText("other"));
    receive(snooze);
    receive("snooze/" + gone + "/795013200");
    receive("acknowledge/" + gone + "2"); // what is gone needs no dismissal
    EXPECT_EQ(pending.all().size(), 3U);
    put("work", whole);
    queue.tryAgain();
    EXPECT_THAT(text(), HasSubstr("TRIGGER;VALUE=DATE-TIME:20260312T130000Z"));
    EXPECT_THAT(told, IsEmpty());
    world.moment += cctz::seconds(61);
    queue.tryAgain();
    EXPECT_THAT(told, ElementsAre(testing::AllOf(HasSubstr("could not be snoozed"),
                                                 HasSubstr("any more."))));
    EXPECT_THAT(pending.all(), IsEmpty());
}

TEST_F(ACommandQueue, KeepsWhatIsDoneWithAnAlarmOfAReadOnlyCalendarBesideIt) {
    const std::string before = text("fixed");
    receive("snooze/" + bell("fixed") + "/795013200");
    EXPECT_EQ(text("fixed"), before);
    EXPECT_THAT(localEdits.amended(path("fixed"), before),
                HasSubstr("TRIGGER;VALUE=DATE-TIME:20260312T130000Z"));
    EXPECT_THAT(world.edited, ElementsAre("fixed.ics"));
    EXPECT_THAT(told, IsEmpty());
    disk.failingStep = 7; // after the command itself was written down
    receive("acknowledge/" + bell("fixed"));
    EXPECT_THAT(told, ElementsAre(HasSubstr("remembered until the program ends only")));
}

TEST_F(ACommandQueue, WritesWhatWasKeptBesideACalendarOnceItCanBeWritten) {
    const std::string before = text("fixed");
    receive("snooze/" + bell("fixed") + "/795013200");
    const std::string amended = localEdits.amended(path("fixed"), before);
    world.fixedTitle.clear();
    receive("edit/" + toDo("fixed") + "/completed/YES");
    EXPECT_THAT(text("fixed"), HasSubstr("TRIGGER;VALUE=DATE-TIME:20260312T130000Z"));
    EXPECT_THAT(text("fixed"), HasSubstr("STATUS:COMPLETED"));
    EXPECT_EQ(localEdits.amended(path("fixed"), before), before);
    EXPECT_NE(amended, before);
}

TEST_F(ACommandQueue, SnoozesAlarmsOfAReadOnlyCalendarThatIsDamaged) {
    const std::string whole = text("fixed");
    const std::string url = "snooze/" + bell("fixed") + "/795013200";
    const std::string cutShort = whole.substr(0, whole.find("END:VCALENDAR"));
    put("fixed", cutShort);
    receive(url);
    EXPECT_THAT(localEdits.amended(path("fixed"), cutShort),
                HasSubstr("TRIGGER;VALUE=DATE-TIME:20260312T130000Z"));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ACommandQueue, MakesANewItemOnceWhateverWasCutShort) {
    receive("new/Tea");
    const std::string once = text();
    // The program was killed before it took note.
    const std::string id = once.substr(once.rfind("\nUID:") + 5, 36);
    const std::string url = std::string(scheme) + "new/Tea";
    pending.add({url, *readHostCommand(url), world.moment, id});
    queue.tryAgain();
    EXPECT_EQ(text(), once);
    EXPECT_THAT(pending.all(), IsEmpty());
}

TEST_F(ACommandQueue, NamesNoCommandToTheUser) {
    receive("delete/everything");
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(presentation.shown, IsEmpty());
}

} // namespace plenzo
