#include "host/store/path_watch.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {

namespace {

namespace fs = std::filesystem;

/// What happens is in the queue as soon as it has happened, so nothing has to be waited for.
class APathWatch : public testing::Test {
protected:
    [[nodiscard]] fs::path path(const std::string& name) const { return m_folder.path() / name; }
    void write(const std::string& name) const { std::ofstream(path(name)) << name; }

    TemporaryFolder m_folder;
    /// The names below the folder of what has changed, "?" for anything.
    std::vector<std::string> changes() {
        const PathChanges changes = m_watch.readChanges();
        std::vector<std::string> names;
        for (const std::string& changed : changes.paths) {
            names.push_back(fs::path(changed).lexically_relative(m_folder.path()).string());
        }
        if (changes.isAnything) {
            names.emplace_back("?");
        }
        return names;
    }

    PathWatch m_watch;
};

} // namespace

TEST_F(APathWatch, NoticesWhatBecomesOfCalendarsInTheFolderAndInThoseInIt) {
    fs::create_directory(path("work"));
    write("work/old.ics");
    m_watch.watch({m_folder.path()});
    EXPECT_THAT(changes(), IsEmpty());
    for (const char* name : {"new.ics", "work/new.ICS", "work/old.ics", "work/color"}) {
        write(name);
        EXPECT_THAT(changes(), ElementsAre(name));
    }
    write("work/.new.ics.part");
    EXPECT_THAT(changes(), IsEmpty());
    fs::rename(path("work/.new.ics.part"), path("work/moved.ics"));
    EXPECT_THAT(changes(), ElementsAre("work/moved.ics"));
    fs::permissions(path("work/moved.ics"), fs::perms::owner_read);
    EXPECT_THAT(changes(), ElementsAre("work/moved.ics"));
    fs::rename(path("work/moved.ics"), path("again.ics"));
    EXPECT_THAT(changes(), ElementsAre("again.ics", "work/moved.ics"));
    fs::create_symlink(path("again.ics"), path("work/link.ics"));
    EXPECT_THAT(changes(), ElementsAre("work/link.ics"));
    fs::remove_all(path("work"));
    EXPECT_THAT(changes(), Contains("?"));
    EXPECT_THAT(changes(), IsEmpty());
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
    for (const char* name : {"new", "other"}) {
        fs::create_directory(path(name));
        EXPECT_THAT(changes(), ElementsAre("?"));
        m_watch.watch({m_folder.path()});
        write(std::string(name) + "/a.ics");
        EXPECT_THAT(changes(), ElementsAre(std::string(name) + "/a.ics"));
    }
    fs::rename(path("new"), path("moved"));
    EXPECT_THAT(changes(), ElementsAre("?"));
    m_watch.watch({m_folder.path()});
    write("moved/a.ics");
    EXPECT_THAT(changes(), ElementsAre("moved/a.ics"));
    fs::create_directory_symlink(path("moved"), path("link"));
    EXPECT_THAT(changes(), ElementsAre("?"));
    m_watch.watch({m_folder.path()});
    write("moved/a.ics");
    EXPECT_THAT(changes(), ElementsAre("link/a.ics", "moved/a.ics"));
    fs::remove(path("link"));
    EXPECT_THAT(changes(), ElementsAre("?"));
}

TEST_F(APathWatch, NoticesAFileByItsNameAlsoBeforeItIsThere) {
    m_watch.watch({path("calendar")});
    write("other.ics");
    fs::create_directory(path("folder"));
    EXPECT_THAT(changes(), IsEmpty());
    write("calendar");
    EXPECT_THAT(changes(), ElementsAre("calendar"));
    write("calendar.new");
    fs::rename(path("calendar.new"), path("calendar"));
    EXPECT_THAT(changes(), ElementsAre("calendar"));
}

TEST_F(APathWatch, NoticesAFileWhoseFoldersAreMadeOneByOne) {
    const std::vector<std::string> paths = {path("config/host/config.toml")};
    m_watch.watch(paths);
    for (const char* name : {"config", "config/host"}) {
        fs::create_directory(path(name));
        EXPECT_THAT(changes(), ElementsAre("?")) << name;
        m_watch.watch(paths);
    }
    write("config/host/config.toml");
    EXPECT_THAT(changes(), ElementsAre("config/host/config.toml"));
    fs::remove_all(path("config"));
    EXPECT_THAT(changes(), Contains("?"));
    m_watch.watch(paths);
    fs::create_directories(path("config/host"));
    EXPECT_THAT(changes(), ElementsAre("?"));
}

TEST_F(APathWatch, NoticesAFileThatComesAsAnotherNameOfOne) {
    m_watch.watch({m_folder.path()});
    write("a.part");
    fs::create_hard_link(path("a.part"), path("a.ics"));
    EXPECT_THAT(changes(), ElementsAre("a.ics"));
    const auto earlier = fs::last_write_time(path("a.part")) - std::chrono::hours(1);
    fs::last_write_time(path("a.part"), earlier);
    changes();
    fs::create_hard_link(path("a.part"), path("b.ics"));
    fs::remove(path("a.part"));
    fs::remove(path("a.ics"));
    EXPECT_THAT(changes(), ElementsAre("a.ics", "b.ics"));
}

TEST_F(APathWatch, NoticesWhatBecomesOfTheFileThatLinksLeadTo) {
    for (const char* name : {"real", "links", "work"}) {
        fs::create_directory(path(name));
    }
    write("real/one.ics");
    fs::create_symlink("../real/one.ics", path("links/one"));
    fs::create_symlink(path("links/one"), path("work/one.ics"));
    fs::create_symlink(path("links/one"), path("config.toml"));
    m_watch.watch({path("work"), path("config.toml")});
    const auto both = ElementsAre("config.toml", "work/one.ics");
    write("real/one.ics");
    EXPECT_THAT(changes(), both);
    write("real/one.part");
    EXPECT_THAT(changes(), IsEmpty());
    fs::rename(path("real/one.part"), path("real/one.ics"));
    EXPECT_THAT(changes(), both);
    fs::remove(path("real/one.ics"));
    EXPECT_THAT(changes(), both);
    fs::create_symlink(path("real/two.ics"), path("work/two.ics"));
    EXPECT_THAT(changes(), ElementsAre("work/two.ics"));
    write("real/two.ics");
    EXPECT_THAT(changes(), ElementsAre("work/two.ics"));
    fs::remove(path("links/one"));
    EXPECT_THAT(changes(), ElementsAre("?"));
}

TEST_F(APathWatch, NoticesThatALinkOnTheWayLeadsElsewhere) {
    for (const char* name : {"first", "second"}) {
        fs::create_directories(path(name) / "work");
    }
    fs::create_directory_symlink("first", path("current"));
    const std::vector<std::string> paths = {path("current"), path("current/work"),
                                            path("current/no/config.toml")};
    for (const char* next : {"second", "first"}) {
        m_watch.watch(paths);
        fs::create_directory_symlink(next, path("new"));
        fs::rename(path("new"), path("current"));
        EXPECT_THAT(changes(), ElementsAre("?"));
        m_watch.watch(paths);
        write("current/work/a.ics");
        EXPECT_THAT(changes(), ElementsAre("current/work/a.ics"));
    }
}

TEST_F(APathWatch, IsNotCaughtByLinksThatLeadInACircle) {
    fs::create_symlink("b.ics", path("a.ics"));
    fs::create_symlink("a.ics", path("b.ics"));
    fs::create_directory_symlink(".", path("self"));
    m_watch.watch({m_folder.path(), path("a.ics"), path("self/self")});
    fs::remove(path("b.ics"));
    EXPECT_THAT(changes(), Contains("?"));
}

TEST_F(APathWatch, SaysWhyItCannotWatch) {
    EXPECT_EQ(m_watch.problem(), "");
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none{0, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    PathWatch blind;
    setrlimit(RLIMIT_NOFILE, &limit);
    blind.watch({m_folder.path()});
    EXPECT_NE(blind.problem(), "");
    EXPECT_FALSE(blind.readChanges());
}

TEST_F(APathWatch, SaysThatAnythingMayHaveChangedWhenWordIsLost) {
    m_watch.watch({m_folder.path()});
    std::ifstream limit("/proc/sys/fs/inotify/max_queued_events");
    int most = 0;
    limit >> most;
    ASSERT_GT(most, 0);
    write("a.ics");
    write("b.ics");
    for (int count = 0; count <= most; ++count) { // alternately, for repeated events are one
        fs::permissions(path(count % 2 == 0 ? "a.ics" : "b.ics"), fs::perms::owner_all);
    }
    EXPECT_THAT(changes(), ElementsAre("a.ics", "b.ics", "?"));
}

TEST_F(APathWatch, LeavesWhatCannotBeWatched) {
    m_watch.watch({path("no/such/folder"), ""});
    EXPECT_FALSE(m_watch.readChanges());
}

} // namespace plenzo
