#include "calendar_fixture.h"
#include "host/store/calendar_store.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace plenzo {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::string fileWith(const std::string& uid) {
    return fileAround("BEGIN:VEVENT\nUID:" + uid + "\nDTSTART:20260310T100000Z\nEND:VEVENT\n");
}

/// A folder "work" with calendars whose items are seen, as time goes by.
class AFileThatIsAway : public testing::Test {
protected:
    AFileThatIsAway() {
        fs::create_directory(path("work"));
        m_store.bearWithAbsentFiles([this] { return m_now; });
    }

    fs::path path(const std::string& name) const { return m_folder.path() / name; }
    void write(const std::string& name, const std::string& text) {
        std::ofstream(path(name)) << text;
    }
    void writeItem(const std::string& name, const std::string& uid) { write(name, fileWith(uid)); }

    void follow(const std::string& name) {
        m_store.setSources({{{path(name)}, {}, {}, false}});
        m_store.update({});
    }

    /// The UIDs of what the calendars hold after the time has passed and anything may have changed.
    std::vector<std::string> itemsAfter(SteadyTime time) {
        m_now += time;
        m_store.update({true, {}});
        return items();
    }

    /// The same when the kernel names these files alone.
    std::vector<std::string> itemsAfterChangeOf(const std::set<std::string>& names) {
        PathChanges changes;
        for (const std::string& name : names) {
            changes.paths.insert(path(name));
        }
        m_store.update(changes);
        return items();
    }

    std::vector<std::string> items() const {
        std::vector<std::string> uids;
        for (const Calendar& calendar : m_store.calendars().calendars) {
            for (const FiledItem& item : itemsOf(calendar)) {
                uids.push_back(item.item->uid);
            }
        }
        std::sort(uids.begin(), uids.end());
        return uids;
    }

    std::vector<std::string> calendarUids() const {
        std::vector<std::string> uids;
        for (const Calendar& calendar : m_store.calendars().calendars) {
            uids.push_back(calendar.uid);
        }
        return uids;
    }

    const std::vector<std::string>& problems() const { return m_store.calendars().problems; }

    TemporaryFolder m_folder;
    SteadyTime m_now{};
    CalendarStore m_store;
};

} // namespace

TEST_F(AFileThatIsAway, CountsForASecondAsItWas) {
    writeItem("work/a.ics", "a");
    follow("work");
    const auto calendar = calendarUids();
    fs::remove(path("work/a.ics"));
    EXPECT_THAT(itemsAfter(0s), ElementsAre("a"));
    EXPECT_EQ(calendarUids(), calendar);
    EXPECT_THAT(problems(), IsEmpty());
    EXPECT_THAT(itemsAfter(999ms), ElementsAre("a"));
    writeItem("work/a.ics", "a");
    EXPECT_THAT(itemsAfter(10s), ElementsAre("a"));
    fs::remove(path("work/a.ics"));
    EXPECT_THAT(itemsAfter(0s), ElementsAre("a"));
    EXPECT_THAT(itemsAfter(1s), IsEmpty());
    EXPECT_THAT(problems(), ElementsAre(path("work").string() + ": holds no .ics file"));
}

TEST_F(AFileThatIsAway, CeasesToCountWithoutFurtherChanges) {
    for (const char* uid : {"a", "b", "c"}) {
        writeItem("work/" + std::string(uid) + ".ics", uid);
    }
    follow("work");
    fs::remove(path("work/a.ics"));
    write("work/b.ics", "");
    EXPECT_THAT(itemsAfterChangeOf({"work/a.ics", "work/b.ics"}), ElementsAre("a", "b", "c"));
    m_now += 1s;
    EXPECT_THAT(itemsAfterChangeOf({}), ElementsAre("b", "c"));
    EXPECT_THAT(problems(), IsEmpty());
    m_now += 29s;
    EXPECT_THAT(itemsAfterChangeOf({}), ElementsAre("c"));
    EXPECT_THAT(problems(), ElementsAre(path("work/b.ics").string() + ": holds no calendar"));
    m_now += 60s;
    itemsAfterChangeOf({});
    EXPECT_THAT(problems(), IsEmpty());
}

TEST_F(AFileThatIsAway, IsBorneWithLongerWhenItIsOnlyDamaged) {
    const std::string whole = fileWith("a");
    writeItem("work/b.ics", "b");
    follow("work");
    for (const std::string& text :
         {std::string(), std::string("no calendar"), whole.substr(0, whole.size() / 2),
          std::string("BEGIN:VCALENDAR\nVERSION:2.0\n")}) {
        writeItem("work/a.ics", "a");
        EXPECT_THAT(itemsAfter(0s), ElementsAre("a", "b"));
        write("work/a.ics", text);
        EXPECT_THAT(itemsAfter(0s), ElementsAre("a", "b")) << text;
        EXPECT_THAT(itemsAfter(29s), ElementsAre("a", "b")) << text;
        EXPECT_THAT(itemsAfter(1s), ElementsAre("b")) << text;
    }
}

TEST_F(AFileThatIsAway, IsNotKeptForEverByOneFaultAfterTheOther) {
    writeItem("work/a.ics", "a");
    follow("work/a.ics");
    for (SteadyTime time = 0s; time < 30s; time += 500ms) {
        if (time % 1s == 0s) {
            write("work/a.ics", "");
        } else {
            fs::remove(path("work/a.ics"));
        }
        EXPECT_THAT(itemsAfter(time == 0s ? 0ms : 500ms), ElementsAre("a"));
    }
    EXPECT_THAT(itemsAfter(500ms), IsEmpty());
    EXPECT_THAT(problems(), SizeIs(1));
}

TEST_F(AFileThatIsAway, DoesNotKeepWhatWasTakenOutOfItOrWhatIsSaidAnew) {
    write("work/a.ics", fileAround("BEGIN:VEVENT\nUID:a\nDTSTART:20260310T100000Z\nEND:VEVENT\n"
                                   "BEGIN:VEVENT\nUID:b\nDTSTART:20260310T100000Z\nEND:VEVENT\n"));
    follow("work");
    writeItem("work/a.ics", "b");
    EXPECT_THAT(itemsAfter(0s), ElementsAre("b"));
    write("work/a.ics", fileAround(""));
    EXPECT_THAT(itemsAfter(0s), IsEmpty());
}

TEST_F(AFileThatIsAway, IsNotKeptBesideItselfUnderAnotherName) {
    fs::create_directory(path("work/inner"));
    writeItem("work/a.ics", "a");
    writeItem("work/b.ics", "b");
    writeItem("work/c.ics", "c");
    follow("work");
    fs::rename(path("work/a.ics"), path("work/new.ics"));
    EXPECT_THAT(itemsAfterChangeOf({"work/a.ics", "work/new.ics"}), ElementsAre("a", "b", "c"));
    fs::rename(path("work/b.ics"), path("work/inner/b.ics"));
    EXPECT_THAT(itemsAfter(0s), ElementsAre("a", "b", "c"));
    fs::rename(path("work/inner"), path("work/moved"));
    EXPECT_THAT(itemsAfter(0s), ElementsAre("a", "b", "c"));
    fs::remove(path("work/c.ics"));
    writeItem("work/d.ics", "d");
    EXPECT_THAT(itemsAfter(0s), ElementsAre("a", "b", "c", "d"));
}

TEST_F(AFileThatIsAway, MayBeAwayWithItsFolderOrItsLink) {
    fs::create_directory(path("real"));
    writeItem("real/b.ics", "b");
    writeItem("work/a.ics", "a");
    fs::create_symlink(path("real/b.ics"), path("work/b.ics"));
    follow("work");
    const auto calendars = calendarUids();
    fs::rename(path("work"), path("other"));
    EXPECT_THAT(itemsAfter(0s), ElementsAre("a", "b"));
    EXPECT_THAT(problems(), IsEmpty());
    fs::rename(path("other"), path("work"));
    EXPECT_THAT(itemsAfter(2s), ElementsAre("a", "b"));
    fs::remove(path("work/b.ics"));
    EXPECT_THAT(itemsAfter(0s), ElementsAre("a", "b"));
    EXPECT_EQ(calendarUids(), calendars);
    fs::remove_all(path("work"));
    EXPECT_THAT(itemsAfter(500ms), ElementsAre("a", "b"));
    EXPECT_THAT(itemsAfter(500ms), ElementsAre("a"));
    EXPECT_THAT(itemsAfter(500ms), IsEmpty());
    EXPECT_THAT(problems(), ElementsAre(path("work").string() + ": No such file or directory"));
}

} // namespace plenzo
