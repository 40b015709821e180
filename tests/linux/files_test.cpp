#include "linux/files_on_disk.h"
#include "linux/system_clock.h"
#include "support/fake_clock.h"
#include "support/fake_files.h"
#include "support/files_contract.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace plenzo {
namespace {

namespace fs = std::filesystem;

class FakeFilesUnderContract final : public FilesContract {
public:
    Files& files() override { return m_files; }
    std::string folder() override { return "/home/ana/folder"; }
    Instant now() override { return m_clock.now(); }

private:
    FakeClock m_clock{Instant(800000000)};
    FakeFiles m_files{m_clock};
};

class FilesOnDiskUnderContract final : public FilesContract {
public:
    Files& files() override { return m_files; }
    std::string folder() override { return m_folder.path(); }
    Instant now() override { return m_clock.now(); }

private:
    SystemClock m_clock;
    TemporaryFolder m_folder;
    FilesOnDisk m_files;
};

template <typename Contract>
class EveryKindOfFiles : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakeFilesUnderContract, FilesOnDiskUnderContract>;
TYPED_TEST_SUITE(EveryKindOfFiles, Kinds);

TYPED_TEST(EveryKindOfFiles, GivesBackWhatReplacedAFile) {
    this->contract.givesBackWhatReplacedAFile();
}

TYPED_TEST(EveryKindOfFiles, LeavesEverythingAsItWasWhenItCannotReplace) {
    this->contract.leavesEverythingAsItWasWhenItCannotReplace();
}

TYPED_TEST(EveryKindOfFiles, KnowsWhenAFileWasWritten) {
    this->contract.knowsWhenAFileWasWritten();
}

TYPED_TEST(EveryKindOfFiles, KeepsAModificationDateInMicrosecondsRoundedUp) {
    this->contract.keepsAModificationDateInMicrosecondsRoundedUp();
}

TYPED_TEST(EveryKindOfFiles, RefusesADateThatNoFileCanHave) {
    this->contract.refusesADateThatNoFileCanHave();
}

TYPED_TEST(EveryKindOfFiles, MovesAFileWithItsDateOverAnother) {
    this->contract.movesAFileWithItsDateOverAnother();
}

TYPED_TEST(EveryKindOfFiles, MovesAFolderWithAllItHolds) {
    this->contract.movesAFolderWithAllItHolds();
}

TYPED_TEST(EveryKindOfFiles, LeavesEverythingAsItWasWhenItCannotMove) {
    this->contract.leavesEverythingAsItWasWhenItCannotMove();
}

TYPED_TEST(EveryKindOfFiles, RemovesAFileOrAFolderWithAllItHolds) {
    this->contract.removesAFileOrAFolderWithAllItHolds();
}

TEST(FilesOnDisk, RemoveALinkAndNotWhatItNames) {
    const TemporaryFolder folder;
    FilesOnDisk files;
    ASSERT_TRUE(files.replace(folder.file("target/file"), {}));
    fs::create_directory_symlink(folder.file("target"), folder.file("link"));
    fs::create_symlink(folder.file("nowhere"), folder.file("broken"));
    EXPECT_TRUE(files.remove(folder.file("link")));
    EXPECT_TRUE(files.remove(folder.file("broken")));
    EXPECT_FALSE(fs::is_symlink(folder.file("link")));
    EXPECT_FALSE(fs::is_symlink(folder.file("broken")));
    EXPECT_TRUE(fs::exists(folder.file("target/file")));
}

TEST(FilesOnDisk, NeverKeepAnotherDateThanTheOneGiven) {
    const TemporaryFolder folder;
    FilesOnDisk files;
    ASSERT_TRUE(files.replace(folder.file("file"), {}));
    Instant before = files.modificationDate(folder.file("file")).value();
    for (const double seconds : {1e10, -1e10, 1e12, -1e12, 9.9e12}) {
        const bool isSet = files.setModificationDate(folder.file("file"), Instant(seconds));
        before = isSet ? Instant(seconds) : before;
        EXPECT_EQ(files.modificationDate(folder.file("file")), before) << seconds;
    }
}

TEST(FilesOnDisk, MakeNoFolderForAFileThatIsNotThere) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FilesOnDisk().move(folder.file("missing"), folder.file("new/name")));
    EXPECT_FALSE(fs::exists(folder.file("new")));
}

} // namespace
} // namespace plenzo
