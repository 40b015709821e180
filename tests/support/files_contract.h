#pragma once

#include "platform/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <string_view>

namespace plenzo {

/// What every implementation of Files keeps to. A subclass gives the files, an empty folder that
/// they are tried in, and the present moment.
class FilesContract {
public:
    FilesContract() = default;
    FilesContract(const FilesContract&) = delete;
    FilesContract& operator=(const FilesContract&) = delete;
    virtual ~FilesContract() = default;

    virtual Files& files() = 0;
    virtual std::string folder() = 0;
    virtual Instant now() = 0;

    void givesBackWhatReplacedAFile() {
        EXPECT_EQ(text("a/b/file"), "nothing");
        EXPECT_TRUE(write("a/b/file", "old and longer"));
        EXPECT_TRUE(write("a/b/file", std::string_view("n\0w", 3)));
        EXPECT_EQ(text("a/b/file"), std::string("n\0w", 3));
        EXPECT_TRUE(write("empty", ""));
        EXPECT_EQ(text("empty"), "");
        EXPECT_EQ(text("a/b"), "nothing") << "a folder has no bytes";
    }

    void leavesEverythingAsItWasWhenItCannotReplace() {
        ASSERT_TRUE(write("a/file", "kept"));
        EXPECT_FALSE(write("a", "lost"));
        EXPECT_FALSE(write("a/file/below", "lost"));
        EXPECT_FALSE(files().replace("", {}));
        EXPECT_EQ(text("a/file"), "kept");
    }

    void knowsWhenAFileWasWritten() {
        EXPECT_EQ(files().modificationDate(path("file")), std::nullopt);
        ASSERT_TRUE(write("a/file", "x"));
        const auto date = files().modificationDate(path("a/file"));
        ASSERT_TRUE(date);
        constexpr double longestTestSeconds = 3600;
        EXPECT_LT(std::abs(now() - *date), longestTestSeconds);
        EXPECT_EQ(files().modificationDate(path("a")), std::nullopt) << "a folder";
    }

    void keepsAModificationDateInMicrosecondsRoundedUp() {
        ASSERT_TRUE(write("file", "x"));
        for (const double seconds : {8.0e8, 8.0e8 + 0.1, 8.0e8 + 0.1234564, 0.0, 1e-7, -0.25,
                                     -5.0e8 - 0.3333333, 803123456.999999, 803123456.9999999}) {
            const Instant wanted(seconds);
            ASSERT_TRUE(files().setModificationDate(path("file"), wanted)) << seconds;
            const Instant kept = files().modificationDate(path("file")).value();
            EXPECT_GE(kept, wanted) << std::to_string(seconds);
            EXPECT_LE(kept - wanted, 1.2e-6) << std::to_string(seconds);
        }
        EXPECT_EQ(text("file"), "x");
    }

    void refusesADateThatNoFileCanHave() {
        ASSERT_TRUE(write("a/file", "x"));
        ASSERT_TRUE(files().setModificationDate(path("a/file"), Instant(8.0e8)));
        for (const double seconds : {HUGE_VAL, -HUGE_VAL, std::nan(""), 1e300, -1e300, 1e19}) {
            EXPECT_FALSE(files().setModificationDate(path("a/file"), Instant(seconds))) << seconds;
        }
        EXPECT_EQ(files().modificationDate(path("a/file")), Instant(8.0e8));
        EXPECT_FALSE(files().setModificationDate(path("a/missing"), Instant(8.0e8)));
        EXPECT_FALSE(files().setModificationDate(path("a"), Instant(8.0e8))) << "a folder";
        EXPECT_EQ(text("a/missing"), "nothing");
    }

    void movesAFileWithItsDateOverAnother() {
        ASSERT_TRUE(write("from", "new"));
        ASSERT_TRUE(files().setModificationDate(path("from"), Instant(5.0e8)));
        ASSERT_TRUE(write("to", "old"));
        EXPECT_TRUE(move("from", "to"));
        EXPECT_EQ(text("to"), "new");
        EXPECT_EQ(text("from"), "nothing");
        EXPECT_EQ(files().modificationDate(path("to")), Instant(5.0e8));
        EXPECT_TRUE(move("to", "new folder/to"));
        EXPECT_TRUE(move("new folder/to", "new folder/to")) << "to itself";
        EXPECT_EQ(text("new folder/to"), "new");
    }

    void movesAFolderWithAllItHolds() {
        ASSERT_TRUE(write("from/file", "1"));
        ASSERT_TRUE(write("from/below/file", "2"));
        ASSERT_TRUE(write("from beside", "3"));
        ASSERT_TRUE(write("empty/file", "4"));
        ASSERT_TRUE(files().remove(path("empty/file")));
        EXPECT_TRUE(move("from", "empty"));
        EXPECT_EQ(text("empty/file"), "1");
        EXPECT_EQ(text("empty/below/file"), "2");
        EXPECT_EQ(text("from beside"), "3");
        EXPECT_EQ(text("from/file"), "nothing");
        EXPECT_FALSE(move("from", "again")) << "it is gone";
    }

    void leavesEverythingAsItWasWhenItCannotMove() {
        ASSERT_TRUE(write("file", "1"));
        ASSERT_TRUE(write("full/file", "2"));
        ASSERT_TRUE(write("other/below/file", "3"));
        EXPECT_FALSE(move("missing", "file"));
        EXPECT_FALSE(move("file", "full")) << "a file over a folder";
        EXPECT_FALSE(move("full", "file")) << "a folder over a file";
        EXPECT_FALSE(move("full", "other")) << "a folder over one that is not empty";
        EXPECT_FALSE(move("full", "full/below")) << "a folder into itself";
        EXPECT_FALSE(move("full", "file/below")) << "below a file";
        EXPECT_EQ(text("file"), "1");
        EXPECT_EQ(text("full/file"), "2");
        EXPECT_EQ(text("other/below/file"), "3");
    }

    void removesAFileOrAFolderWithAllItHolds() {
        for (const char* name : {"a/file", "a/below/file", "a beside", "b/file"}) {
            ASSERT_TRUE(write(name, "x"));
        }
        EXPECT_TRUE(files().remove(path("a")));
        EXPECT_TRUE(files().remove(path("b/file")));
        EXPECT_TRUE(files().remove(path("b/file"))) << "it is not there any more";
        EXPECT_TRUE(files().remove(path("never/there")));
        EXPECT_EQ(text("a/file"), "nothing");
        EXPECT_EQ(text("a/below/file"), "nothing");
        EXPECT_EQ(text("b/file"), "nothing");
        EXPECT_EQ(text("a beside"), "x");
    }

protected:
    std::string path(const std::string& name) { return folder() + "/" + name; }
    bool write(const std::string& name, std::string_view text) {
        return files().replace(path(name), std::as_bytes(std::span(text)));
    }
    bool move(const std::string& from, const std::string& to) {
        return files().move(path(from), path(to));
    }
    std::string text(const std::string& name) {
        const auto read = files().read(path(name));
        std::string text(read ? read->size() : 0, ' ');
        std::ranges::transform(read.value_or(std::vector<std::byte>()), text.begin(),
                               [](std::byte byte) { return static_cast<char>(byte); });
        return read ? text : "nothing";
    }
};

} // namespace plenzo
