#include "host/path_watch.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

/// What happens is in the queue as soon as it has happened, so nothing has to be waited for.
class APathWatch : public testing::Test {
protected:
    [[nodiscard]] fs::path path(const std::string& name) const { return m_folder.path() / name; }
    void write(const std::string& name) const { std::ofstream(path(name)) << name; }

    TemporaryFolder m_folder;
    PathWatch m_watch;
};

} // namespace

TEST_F(APathWatch, NoticesWhatBecomesOfCalendarsInTheFolderAndInThoseInIt) {
    fs::create_directory(path("work"));
    write("work/old.ics");
    m_watch.watch({m_folder.path()});
    EXPECT_FALSE(m_watch.readChanges());
    for (const char* name : {"new.ics", "work/new.ics", "work/old.ics", "work/color"}) {
        write(name);
        EXPECT_TRUE(m_watch.readChanges()) << name;
    }
    write("work/.new.ics.part");
    EXPECT_FALSE(m_watch.readChanges());
    fs::rename(path("work/.new.ics.part"), path("work/moved.ics"));
    EXPECT_TRUE(m_watch.readChanges());
    fs::permissions(path("work/moved.ics"), fs::perms::owner_read);
    EXPECT_TRUE(m_watch.readChanges());
    fs::remove(path("work/moved.ics"));
    EXPECT_TRUE(m_watch.readChanges());
    fs::remove_all(path("work"));
    EXPECT_TRUE(m_watch.readChanges());
    EXPECT_FALSE(m_watch.readChanges());
}

TEST_F(APathWatch, PassesOverWhatIsNoCalendarAndWhatIsNotFinished) {
    m_watch.watch({m_folder.path()});
    for (const char* name : {"notes.txt", ".hidden.ics", "calendar.ics~"}) {
        write(name);
    }
    EXPECT_FALSE(m_watch.readChanges());
    std::ofstream unfinished(path("big.ics"));
    unfinished << "half" << std::flush;
    EXPECT_FALSE(m_watch.readChanges());
    unfinished.close();
    EXPECT_TRUE(m_watch.readChanges());
}

TEST_F(APathWatch, WatchesTheFoldersThatCame) {
    m_watch.watch({m_folder.path()});
    fs::create_directory(path("new"));
    EXPECT_TRUE(m_watch.readChanges());
    m_watch.watch({m_folder.path()});
    write("new/a.ics");
    EXPECT_TRUE(m_watch.readChanges());
}

TEST_F(APathWatch, NoticesAFileByItsNameAlsoBeforeItIsThere) {
    m_watch.watch({path("calendar")});
    write("other");
    EXPECT_FALSE(m_watch.readChanges());
    write("calendar");
    EXPECT_TRUE(m_watch.readChanges());
    write("calendar.new");
    fs::rename(path("calendar.new"), path("calendar"));
    EXPECT_TRUE(m_watch.readChanges());
}

TEST_F(APathWatch, LeavesWhatCannotBeWatched) {
    m_watch.watch({path("no/such/folder"), ""});
    EXPECT_FALSE(m_watch.readChanges());
}

} // namespace plenzo
