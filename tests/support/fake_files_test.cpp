#include "support/fake_clock.h"
#include "support/fake_files.h"

#include <gtest/gtest.h>

namespace plenzo {
namespace {

class FakeFilesThatFail : public testing::Test {
protected:
    bool write(const std::string& path) {
        const std::vector<std::byte> bytes(3);
        return files.replace(path, bytes);
    }

    FakeClock clock{Instant(8.0e8)};
    FakeFiles files{clock};
};

TEST_F(FakeFilesThatFail, DoNothingOnceThePowerIsLost) {
    ASSERT_TRUE(write("kept"));
    files.losePowerAfter(2);
    EXPECT_TRUE(write("first"));
    EXPECT_TRUE(files.move("first", "second"));
    EXPECT_FALSE(files.hasPower());
    EXPECT_FALSE(write("third"));
    EXPECT_FALSE(files.move("second", "third"));
    EXPECT_FALSE(files.remove("second"));
    EXPECT_FALSE(files.setModificationDate("second", Instant(1)));
    EXPECT_EQ(files.read("kept"), std::nullopt);
    EXPECT_EQ(files.modificationDate("kept"), std::nullopt);
    EXPECT_EQ(files.changeCount, 3) << "what was asked for without power does not count";
    files.restorePower();
    EXPECT_TRUE(files.read("second"));
    EXPECT_EQ(files.modificationDate("second"), Instant(8.0e8));
    EXPECT_EQ(files.contents.size(), 2U);
}

TEST_F(FakeFilesThatFail, KeepWhatIsThereWhenTheyAreFullOrReadOnly) {
    files.contents["folder/file"] = std::vector<std::byte>(5);
    clock.set(Instant(9.0e8));
    files.isFull = true;
    EXPECT_FALSE(write("folder/file"));
    EXPECT_TRUE(files.move("folder", "moved"));
    files.isReadOnly = true;
    EXPECT_FALSE(files.move("moved", "folder"));
    EXPECT_FALSE(files.remove("moved"));
    EXPECT_FALSE(files.setModificationDate("moved/file", Instant(1)));
    EXPECT_EQ(files.read("moved/file")->size(), 5U);
    EXPECT_EQ(files.modificationDate("moved/file"), Instant(8.0e8)) << "when the fake was made";
}

} // namespace
} // namespace plenzo
