#include "calendar_fixture.h"
#include "host/configuration/configured_calendars.h"
#include "host/configuration/new_item_place.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

/// Calendars in a folder of the test's own, configured in the order of the calls.
class ANewItem : public testing::Test {
protected:
    ~ANewItem() override {
        for (const std::string& folder : m_lockedFolders) {
            fs::permissions(folder, fs::perms::owner_all);
        }
    }

    std::string path(const std::string& name) const { return m_folder.file(name); }

    /// A calendar file with one event; named calendars are no single items.
    void write(const std::string& name, const std::string& title = "Own",
               const std::string& uid = "event-1") {
        fs::create_directories(fs::path(path(name)).parent_path());
        std::ofstream(path(name)) << fileAround((title.empty() ? "" : "NAME:" + title + "\n") +
                                                "BEGIN:VEVENT\nUID:" + uid +
                                                "\nDTSTART:20260310T100000Z\nEND:VEVENT\n");
    }

    void lock(const std::string& name) {
        const bool isFolder = fs::is_directory(path(name));
        fs::permissions(path(name), isFolder ? fs::perms::owner_read | fs::perms::owner_exec
                                             : fs::perms::owner_read);
        if (isFolder) {
            m_lockedFolders.push_back(path(name));
        }
    }

    ConfiguredCalendar& configure(const std::string& name) {
        ConfiguredCalendar calendar;
        calendar.path = path(name);
        m_configuration.calendars.push_back(calendar);
        return m_configuration.calendars.back();
    }

    /// "file NAME", "folder NAME" or why there is none, with names relative to the test's folder.
    std::string place() const {
        const CalendarSet set = loadConfiguredCalendars(m_configuration);
        const NewItemPlace place = newItemPlace(m_configuration.calendars, set.calendars);
        if (!place.error.empty()) {
            return relative(place.error);
        }
        return (place.kind == NewItemPlace::Kind::File ? "file " : "folder ") +
               relative(place.path);
    }

    std::string relative(std::string text) const {
        const std::string folder = m_folder.path().string() + "/";
        for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
            text.erase(at, folder.size());
        }
        return text;
    }

    TemporaryFolder m_folder;
    Configuration m_configuration;
    std::vector<std::string> m_lockedFolders;
};

} // namespace

TEST_F(ANewItem, GoesIntoTheDefaultFile) {
    write("a.ics");
    write("b.ics");
    configure("a.ics");
    configure("b.ics").isDefault = true;
    EXPECT_EQ(place(), "file b.ics");
}

TEST_F(ANewItem, WithoutADefaultGoesIntoTheFirstCalendarThatCanBeWritten) {
    write("marked.ics");
    write("locked.ics");
    write("locked/c.ics");
    write("d.ics");
    configure("marked.ics").isReadOnly = true;
    configure("missing.ics");
    configure("locked.ics");
    configure("locked");
    lock("locked.ics");
    lock("locked");
    EXPECT_EQ(place(), "no calendar can be written");
    configure("d.ics");
    EXPECT_EQ(place(), "file d.ics");
    m_configuration.calendars.clear();
    EXPECT_EQ(place(), "there are no calendars");
}

TEST_F(ANewItem, GoesNowhereWhenTheDefaultCannotBeWritten) {
    write("a.ics");
    write("b.ics");
    write("locked/c.ics");
    lock("locked");
    configure("a.ics");
    ConfiguredCalendar& chosen = configure("b.ics");
    chosen.isDefault = true;
    chosen.isReadOnly = true;
    EXPECT_EQ(place(), "the default calendar \"b.ics\" is read-only");
    chosen.isReadOnly = false;
    lock("b.ics");
    EXPECT_EQ(place(), "the default calendar \"b.ics\" is read-only");
    chosen.path = path("locked/c.ics");
    EXPECT_EQ(place(),
              "the default calendar \"locked/c.ics\" lies in a folder in which nothing can "
              "be written");
    chosen.path = path("locked");
    EXPECT_EQ(place(), "the default calendar \"locked\" is read-only");
    chosen.path = path("none");
    EXPECT_EQ(place(), "the default calendar \"none\" does not exist");
    chosen.path = "/dev/null";
    EXPECT_EQ(place(), "the default calendar \"/dev/null\" is neither a file nor a folder");
}

TEST_F(ANewItem, MakesADefaultFileThatIsToCome) {
    ConfiguredCalendar& chosen = configure("new.ics");
    chosen.isDefault = true;
    EXPECT_EQ(place(), "file new.ics");
    chosen.path = path("no folder/new.ics");
    EXPECT_EQ(place(), "the default calendar \"no folder/new.ics\" lies in a folder in which "
                       "nothing can be written");
}

TEST_F(ANewItem, GetsAFileOfItsOwnInAFolderOfItems) {
    fs::create_directory(path("empty"));
    write("single/a@host.ics", "", "a@host");
    write("several/x.ics", "", "one");
    write("several/y.ics", "", "two");
    write("named/x.ics");
    std::ofstream(path("named/displayname")) << "Named\n";
    fs::create_directory_symlink(path("several"), path("link"));
    ConfiguredCalendar& chosen = configure("");
    for (const char* name : {"empty", "single", "several", "named", "link"}) {
        chosen.path = path(name);
        EXPECT_EQ(place(), "folder " + std::string(name));
    }
}

TEST_F(ANewItem, DoesNotMakeAFolderOfACalendarThatIsOneFile) {
    write("lone/work.ics", "", "one");
    write("named/one.ics", "Named", "one");
    ConfiguredCalendar& chosen = configure("");
    chosen.path = path("lone");
    EXPECT_EQ(place(), "file lone/work.ics");
    chosen.path = path("named");
    EXPECT_EQ(place(), "file named/one.ics");
}

TEST_F(ANewItem, OfAFolderWithSeveralCalendarsGoesIntoTheFirstThatCanBeWritten) {
    write("files/a.ics");
    write("files/b.ics");
    lock("files/a.ics");
    write("root/one/x.ics", "", "first");
    write("root/one/y.ics", "", "second");
    write("root/two/z.ics");
    ConfiguredCalendar& chosen = configure("files");
    chosen.isDefault = true;
    EXPECT_EQ(place(), "file files/b.ics");
    chosen.path = path("root");
    EXPECT_EQ(place(), "folder root/one");
    lock("root/one/x.ics");
    EXPECT_EQ(place(), "file root/two/z.ics");
    lock("root/two/z.ics");
    EXPECT_EQ(place(), "the default calendar \"root\" holds no calendar that can be written");
}

TEST_F(ANewItem, FindsTheCalendarsOfAFolderThatAnotherTableNamedBefore) {
    write("files/a.ics");
    configure("files/../files");
    configure("files").isDefault = true;
    EXPECT_EQ(place(), "file files/../files/a.ics");
}

TEST_F(ANewItem, FollowsALinkToTheFolderThatHasToTakeIt) {
    write("locked/a.ics");
    fs::create_symlink(path("locked/a.ics"), path("link.ics"));
    configure("link.ics").isDefault = true;
    EXPECT_EQ(place(), "file link.ics");
    lock("locked");
    EXPECT_EQ(place(), "the default calendar \"link.ics\" lies in a folder in which nothing can be "
                       "written");
}

TEST(ANewItemPlace, NamesFilesAfterItems) {
    const NewItemPlace folder{NewItemPlace::Kind::Folder, "/c", {}};
    EXPECT_EQ(folder.fileFor("0f-1"), "/c/0f-1.ics");
    EXPECT_EQ(folder.fileFor("../../etc/x"), "/c/_.._2F.._2Fetc_2Fx.ics");
    EXPECT_EQ(folder.fileFor(".hidden@h"), "/c/_.hidden_40h.ics");
    EXPECT_LT(folder.fileFor(std::string(5000, 'x')).size(), 255U);
    EXPECT_EQ((NewItemPlace{NewItemPlace::Kind::File, "/c/a.ics", {}}.fileFor("b")), "/c/a.ics");
}

} // namespace plenzo
