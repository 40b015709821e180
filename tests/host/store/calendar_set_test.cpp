#include "calendar_fixture.h"
#include "host/agent_push.h"
#include "host/store/agent_events.h"
#include "host/store/calendar_records.h"
#include "host/store/calendar_set.h"
#include "host/store/calendar_store.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace plenzo {

namespace {

class ACalendarSet : public testing::Test {
protected:
    std::string write(const std::string& name, const std::string& text) {
        const std::filesystem::path path = m_folder.path() / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
        return path.string();
    }

    std::string writeEvent(const std::string& name, const std::string& lines = "") {
        return write(name, fileAround(lines + "BEGIN:VEVENT\nUID:" + name +
                                      "\nDTSTART:20260310T100000Z\nEND:VEVENT\n"));
    }

    static std::vector<std::string> titlesOf(const CalendarSet& set) {
        std::vector<std::string> titles;
        for (const Calendar& calendar : set.calendars) {
            titles.push_back(calendar.title + " " + std::to_string(itemsOf(calendar).size()));
        }
        return titles;
    }

    std::string folder() const { return m_folder.path().string(); }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(ACalendarSet, HoldsTheFilesOfAFolderAndOfTheFoldersInIt) {
    writeEvent("work.ics", "NAME:Work\n");
    writeEvent("HOME.ICS", "NAME:Home\n");
    writeEvent("inner/club.ics", "NAME:Club\n");
    writeEvent("inner/deeper/lost.ics", "NAME:Too deep\n");
    writeEvent(".hidden.ics", "NAME:Hidden\n");
    write("notes.txt", "BEGIN:VCALENDAR\nEND:VCALENDAR\n");
    EXPECT_THAT(titlesOf(loadCalendars({folder()})),
                UnorderedElementsAre("Work 1", "Home 1", "Club 1"));
}

TEST_F(ACalendarSet, TakesAFolderOfSingleItemsForOneCalendar) {
    writeEvent("sync/a.ics");
    writeEvent("sync/b.ics");
    writeEvent("named/c.ics");
    write("named/displayname", "My list\n");
    write("named/color", "#112233\n");
    const CalendarSet set = loadCalendars({folder()});
    EXPECT_THAT(titlesOf(set), UnorderedElementsAre("sync 2", "My list 1"));
    EXPECT_EQ(set.calendars[0].color, 0x112233U);
}

TEST_F(ACalendarSet, NamesWhatItCannotReadAndGoesOn) {
    const std::string good = writeEvent("good.ics");
    const std::string text = write("text.ics", "no calendar\n");
    const std::string pipe = m_folder.file("pipe.ics");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_directory(m_folder.path() / "empty");
    const std::string missing = m_folder.file("missing.ics");
    const CalendarSet set =
        loadCalendars({missing, pipe, text, m_folder.file("empty"), good, good});
    EXPECT_THAT(titlesOf(set), ElementsAre("good 1"));
    EXPECT_THAT(set.problems,
                ElementsAre(missing + ": No such file or directory", pipe + ": is no regular file",
                            text + ": holds no calendar",
                            m_folder.file("empty") + ": holds no .ics file"));
}

TEST_F(ACalendarSet, KnowsReadOnlyFiles) {
    const std::string path = writeEvent("a.ics");
    EXPECT_FALSE(loadCalendars({path}).calendars.at(0).isReadOnly);
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_TRUE(loadCalendars({path}).calendars.at(0).isReadOnly);
}

TEST_F(ACalendarSet, TellsTheSameEventInTwoCalendarsApart) {
    const std::string text =
        fileAround("BEGIN:VEVENT\nUID:same\nDTSTART:20260310T100000Z\nEND:VEVENT\n");
    const CalendarSet set = loadCalendars({write("a.ics", text), write("b.ics", text)});
    AgentEvents events;
    events.update(set, windowFrom("2026-03-10T08:00:00Z"));
    ASSERT_EQ(events.all().size(), 2U);
    EXPECT_NE(events.all()[0].dictionary()->stringForKey("uid"),
              events.all()[1].dictionary()->stringForKey("uid"));
}

TEST_F(ACalendarSet, HoldsAFileOfSeveralSourcesInTheFirstOfThem) {
    const std::string one = writeEvent("sync/one.ics");
    writeEvent("sync/two.ics");
    const CalendarSource folder{{m_folder.file("sync")}, "Folder", {}, false};
    const CalendarSource file{{m_folder.file("sync/../sync/one.ics")}, "File", {}, false};
    const auto titlesInOrder = [](const std::vector<CalendarSource>& sources) {
        CalendarStore store;
        store.setSources(sources);
        store.update({});
        return titlesOf(store.calendars());
    };
    EXPECT_THAT(titlesInOrder({folder, file}), ElementsAre("Folder 2"));
    EXPECT_THAT(titlesInOrder({file, folder}), ElementsAre("File 1", "Folder 1"));
    EXPECT_THAT(titlesInOrder({file, file, folder, folder}), ElementsAre("File 1", "Folder 1"));
    std::filesystem::create_symlink(one, m_folder.file("link.ics"));
    const CalendarSource link{{m_folder.file("link.ics")}, "Link", {}, false};
    EXPECT_THAT(titlesInOrder({link, folder, file}), ElementsAre("Link 1", "Folder 1"));
}

TEST_F(ACalendarSet, BecomesASourceListWithOneHeading) {
    const CalendarSet set = loadCalendars({writeEvent("a.ics", "NAME:A\nCOLOR:red\n")});
    const Array sourceList = sourceListOf(set.calendars);
    ASSERT_EQ(sourceList.size(), 1U);
    const Dictionary& heading = *sourceList[0].dictionary();
    EXPECT_TRUE(heading.boolForKey("header"));
    ASSERT_NE(heading.arrayForKey("children"), nullptr);
    const Dictionary& node = *(*heading.arrayForKey("children"))[0].dictionary();
    EXPECT_FALSE(node.boolForKey("header"));
    EXPECT_TRUE(node.boolForKey("visible"));
    EXPECT_EQ(node.stringForKey("title"), "A");
    EXPECT_EQ(node.integerForKey("colInt"), 0xFF0000);
    const Array records =
        calendarRecords(set.calendars.at(0), windowFrom("2026-03-10T08:00:00Z")).records;
    EXPECT_EQ(node.stringForKey("uid"), records[0].dictionary()->stringForKey("cuid"));
}

} // namespace plenzo
