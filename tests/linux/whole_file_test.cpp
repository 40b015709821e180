#include "linux/whole_file.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace plenzo {
namespace {

namespace fs = std::filesystem;

std::span<const std::byte> bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

std::string contents(const std::string& path) {
    const auto read = readWholeFile(path);
    if (!read) {
        return "nothing";
    }
    std::string text(read->size(), ' ');
    std::transform(read->begin(), read->end(), text.begin(),
                   [](std::byte byte) { return static_cast<char>(byte); });
    return text;
}

std::size_t fileCount(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(AWholeFile, IsReplacedWithItsFoldersAndReadableByTheUserAlone) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a/b/file");
    ASSERT_TRUE(replaceWholeFile(path, bytes("old")));
    ASSERT_TRUE(replaceWholeFile(path, bytes("new and longer")));
    EXPECT_EQ(contents(path), "new and longer");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(folder.file("a")).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fileCount(folder.file("a/b")), 1U) << "no temporary file stays";
}

TEST(AWholeFile, StaysAsItWasWhenItCannotBeReplaced) {
    const TemporaryFolder folder;
    ASSERT_TRUE(replaceWholeFile(folder.file("file"), bytes("kept")));
    EXPECT_FALSE(replaceWholeFile(folder.file("file/below"), bytes("lost")));
    fs::create_directory(folder.file("folder"));
    EXPECT_FALSE(replaceWholeFile(folder.file("folder"), bytes("lost")));
    EXPECT_EQ(contents(folder.file("file")), "kept");
    EXPECT_EQ(fileCount(folder.path()), 2U);
}

TEST(AWholeFile, IsReplacedBehindItsLink) {
    const TemporaryFolder folder;
    ASSERT_TRUE(replaceWholeFile(folder.file("target"), bytes("old")));
    fs::create_symlink(folder.file("target"), folder.file("link"));
    ASSERT_TRUE(replaceWholeFile(folder.file("link"), bytes("new")));
    EXPECT_TRUE(fs::is_symlink(folder.file("link")));
    EXPECT_EQ(contents(folder.file("target")), "new");
}

TEST(AWholeFile, IsReadOnlyWhenItIsARegularFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {folder.file("missing"), folder.file("pipe"), folder.file(""), std::string("/dev/null")}) {
        EXPECT_EQ(readWholeFile(path), std::nullopt) << path;
    }
    ASSERT_TRUE(replaceWholeFile(folder.file("empty"), {}));
    EXPECT_EQ(contents(folder.file("empty")), "");
}

TEST(ADamagedFile, IsSetAsideUnderAFreeName) {
    const TemporaryFolder folder;
    for (const char* text : {"first", "second", "third"}) {
        ASSERT_TRUE(replaceWholeFile(folder.file("file"), bytes(text)));
        ASSERT_TRUE(setDamagedFileAside(folder.file("file")));
    }
    EXPECT_EQ(contents(folder.file("file.damaged")), "first");
    EXPECT_EQ(contents(folder.file("file.damaged-2")), "second");
    EXPECT_EQ(contents(folder.file("file.damaged-3")), "third");
    EXPECT_FALSE(fs::exists(folder.file("file")));
    EXPECT_FALSE(setDamagedFileAside(folder.file("file")));
}

} // namespace
} // namespace plenzo
