#include "breakable_files.h"
#include "calendar_fixture.h"
#include "host/commands/pending_commands.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

using testing::ElementsAre;

namespace plenzo {

namespace {

class ThePendingCommands : public testing::Test {
protected:
    static PendingCommand command(const std::string& rest, const std::string& id) {
        const std::string url = "plenzoevent://" + rest;
        return {url, readHostCommand(url).value(), instant("2026-03-01T09:00:00Z"), id};
    }

    std::vector<std::string> idsAfterRestart() {
        BreakableFiles disk;
        std::vector<std::string> ids;
        PendingCommands ofNextRun(disk, path);
        ofNextRun.load();
        for (const PendingCommand& pending : ofNextRun.all()) {
            EXPECT_EQ(pending.received, instant("2026-03-01T09:00:00Z"));
            EXPECT_EQ(pending.url, command(pending.url.substr(14), "").url);
            ids.push_back(pending.id);
        }
        return ids;
    }

    TemporaryFolder folder;
    std::string path = folder.file("state/plenzohost/commands");
    BreakableFiles files;
};

} // namespace

TEST_F(ThePendingCommands, OutliveTheProgram) {
    PendingCommands pending(files, path);
    EXPECT_EQ(pending.add(command("new/Tea%20tomorrow", "1")), "");
    EXPECT_EQ(pending.add(command("snooze/r/600", "2")), "");
    EXPECT_EQ(pending.add(command("acknowledge/r", "3")), ""); // takes the place of the snooze
    EXPECT_THAT(idsAfterRestart(), ElementsAre("1", "3"));
    EXPECT_EQ(pending.remove("1"), "");
    EXPECT_THAT(idsAfterRestart(), ElementsAre("3"));
    EXPECT_EQ(pending.remove("3"), "");
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ThePendingCommands, StayInMemoryAndAsTheyWereOnAFullDisk) {
    PendingCommands pending(files, path);
    EXPECT_EQ(pending.add(command("new/Tea", "1")), "");
    files.failingStep = 2; // after the writing and the moving of the first
    EXPECT_EQ(pending.add(command("new/Cake", "2")), "No space left on device");
    EXPECT_EQ(pending.all().size(), 2U);
    EXPECT_THAT(idsAfterRestart(), ElementsAre("1"));
}

TEST_F(ThePendingCommands, AreNoneInADamagedFile) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    for (const char* text : {"", "bplist00", "plenzoevent://new/Tea\n"}) {
        std::ofstream(path, std::ios::trunc) << text;
        EXPECT_THAT(idsAfterRestart(), ElementsAre());
    }
    EXPECT_EQ(PendingCommands(files, path).add(command("new/Tea", "1")), "");
    EXPECT_THAT(idsAfterRestart(), ElementsAre("1"));
}

TEST_F(ThePendingCommands, AreAThousandAtMost) {
    PendingCommands pending(files, {});
    for (int number = 0; number <= 1'000; ++number) {
        EXPECT_NE(pending.add(command("new/Tea", std::to_string(number))), ""); // has no folder
    }
    EXPECT_EQ(pending.all().size(), 1'000U);
    EXPECT_EQ(pending.all().front().id, "1");
}

} // namespace plenzo
