#include "linux/file_watch.h"
#include "linux/regional_settings_of_system.h"
#include "support/environment_variable.h"
#include "support/running_loop.h"
#include "support/temporary_folder.h"
#include "support/zone_link.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace plenzo {
namespace {

class TheRegionalSettings : public testing::Test {
protected:
    EnvironmentVariable m_noZone{"TZ", nullptr};
    EnvironmentVariable m_noLocale{"LC_ALL", nullptr};
    EnvironmentVariable m_timeLocale{"LC_TIME", "en_GB.UTF-8"};
    TemporaryFolder m_folder;
    ZoneLink m_link{m_folder.file("localtime"), "Europe/Berlin"};
};

TEST_F(TheRegionalSettings, FollowTheLinkToTheZone) {
    RegionalSettingsOfSystem settings(m_link.path());
    EXPECT_EQ(settings.timeZone().name(), "Europe/Berlin");
    EXPECT_FALSE(settings.readLocaltimeAgain()) << "nothing is different";
    m_link.replace("Asia/Tokyo");
    EXPECT_EQ(settings.timeZone().name(), "Europe/Berlin") << "until it is read again";
    EXPECT_TRUE(settings.readLocaltimeAgain());
    EXPECT_EQ(settings.timeZone().name(), "Asia/Tokyo");
}

TEST_F(TheRegionalSettings, KeepTheZoneWhenTheLinkIsOfNoUse) {
    RegionalSettingsOfSystem settings(m_link.path());
    std::filesystem::remove(m_link.path());
    EXPECT_FALSE(settings.readLocaltimeAgain());
    std::ofstream(m_link.path()) << "a copy of zone data has no name";
    EXPECT_FALSE(settings.readLocaltimeAgain());
    for (const char* name : {"", "Nowhere/Nothing", "../../etc/passwd", "/etc/localtime"}) {
        EXPECT_FALSE(settings.setTimeZoneName(name)) << name;
    }
    EXPECT_EQ(settings.timeZone().name(), "Europe/Berlin");
    EXPECT_EQ(RegionalSettingsOfSystem("/nowhere/at/all").timeZone(), TimeZone::universal());
}

TEST_F(TheRegionalSettings, KeepTheZoneOfTZ) {
    const EnvironmentVariable zone("TZ", "Europe/London");
    RegionalSettingsOfSystem settings(m_link.path());
    EXPECT_FALSE(settings.readLocaltimeAgain());
    EXPECT_FALSE(settings.setTimeZoneName("Asia/Tokyo"));
    EXPECT_EQ(settings.timeZone().name(), "Europe/London");
}

TEST_F(TheRegionalSettings, FollowTheLocaleOfTheSystem) {
    RegionalSettingsOfSystem settings(m_link.path());
    EXPECT_EQ(settings.locale(), "en_GB");
    EXPECT_TRUE(settings.setSystemLocale({"LANG=de_DE.UTF-8"}));
    EXPECT_EQ(settings.locale(), "de_DE");
    EXPECT_TRUE(settings.setSystemLocale({"LC_TIME=fr_FR.UTF-8", "LANG=de_DE.UTF-8"}));
    EXPECT_EQ(settings.locale(), "fr_FR");
    EXPECT_FALSE(settings.setSystemLocale({"LC_TIME=fr_FR.UTF-8", "LANG=nl_NL.UTF-8"}));
}

TEST_F(TheRegionalSettings, KeepTheLocaleWhenTheNewOneIsOfNoUse) {
    RegionalSettingsOfSystem settings(m_link.path());
    const std::string huge(std::size_t{1} << 20, 'x');
    for (const std::string assignment :
         {"", "LANG", "LANG=", "LANGUAGE=de", "=de_DE", "LANG=../../x", "LANG=d\x01", "LANG=é"}) {
        EXPECT_FALSE(settings.setSystemLocale({assignment})) << assignment;
    }
    EXPECT_FALSE(settings.setSystemLocale({"LANG=" + huge, huge}));
    EXPECT_FALSE(settings.setSystemLocale({}));
    EXPECT_EQ(settings.locale(), "en_GB");
}

TEST_F(TheRegionalSettings, KeepTheLocaleOfLC_ALL) {
    const EnvironmentVariable all("LC_ALL", "sv_SE.UTF-8");
    RegionalSettingsOfSystem settings(m_link.path());
    EXPECT_FALSE(settings.setSystemLocale({"LC_TIME=fr_FR.UTF-8", "LANG=de_DE.UTF-8"}));
    EXPECT_EQ(settings.locale(), "sv_SE");
}

class AFileWatch : public testing::Test {
protected:
    void write(const char* name) { std::ofstream(m_folder.file(name)) << "text"; }
    void runUntilChanges(int count) {
        m_running.runUntil([this, count] { return m_changes >= count; });
    }

    RunningLoop m_running;
    TemporaryFolder m_folder;
    int m_changes = 0;
    FileWatch m_watch{m_running.loop(), m_folder.file("watched"), [this] { ++m_changes; }};
};

TEST_F(AFileWatch, SpeaksOnceForABurst) {
    for (int count = 0; count < 20; ++count) {
        write("new");
        std::filesystem::rename(m_folder.file("new"), m_folder.file("watched"));
    }
    runUntilChanges(1);
    EXPECT_EQ(m_changes, 1);
    std::filesystem::remove(m_folder.file("watched"));
    runUntilChanges(2);
    std::filesystem::create_symlink("/nowhere", m_folder.file("watched"));
    runUntilChanges(3);
    EXPECT_EQ(m_changes, 3);
}

TEST_F(AFileWatch, DoesNotWaitForTheEndOfABurstThatHasNone) {
    m_running.runUntil([this] {
        write("watched");
        return m_changes > 0;
    });
}

TEST_F(AFileWatch, LeavesOutItsNeighbours) {
    int neighbourChanges = 0;
    const FileWatch neighbour(m_running.loop(), m_folder.file("watched.new"),
                              [&neighbourChanges] { ++neighbourChanges; });
    write("watched.new");
    write("atched");
    write("watche");
    m_running.runUntil([&neighbourChanges] { return neighbourChanges == 1; });
    EXPECT_EQ(m_changes, 0);
    write("watched");
    runUntilChanges(1);
    EXPECT_EQ(neighbourChanges, 1);
}

TEST_F(AFileWatch, IsSilentWithoutAFolder) {
    const FileWatch nowhere(m_running.loop(), "/nowhere/at/all", [] { FAIL(); });
    const FileWatch unnamed(m_running.loop(), "", [] { FAIL(); });
    write("watched");
    runUntilChanges(1);
}

} // namespace
} // namespace plenzo
