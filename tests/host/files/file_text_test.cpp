#include "host/files/file_text.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace plenzo {

namespace {

class AFileText : public testing::Test {
protected:
    AFileText() {
        std::string pattern = (fs::temp_directory_path() / "plenzo-text-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
        fs::create_directories(m_folder / "folder");
        fs::create_directories(m_folder / "links");
        path = (m_folder / "folder" / "c.ics").string();
        link = (m_folder / "links" / "c.ics").string();
        std::ofstream(path) << "text";
        fs::create_symlink("../folder/c.ics", link);
    }
    ~AFileText() override { fs::remove_all(m_folder); }

    void setModes(mode_t file, mode_t folder, mode_t folderOfLink) const {
        ASSERT_EQ(chmod(path.c_str(), file), 0);
        ASSERT_EQ(chmod((m_folder / "folder").c_str(), folder), 0);
        ASSERT_EQ(chmod((m_folder / "links").c_str(), folderOfLink), 0);
    }

    fs::path m_folder;
    std::string path;
    std::string link;
};

} // namespace

TEST_F(AFileText, IsWritableWhereAnotherCanTakeItsPlace) {
    const struct {
        mode_t file;
        mode_t folder;
        mode_t folderOfLink;
        bool isWritable;
    } rows[] = {
        {0644, 0755, 0755, true},
        {0444, 0755, 0755, false},
        {0644, 0555, 0755, false},
        {0644, 0755, 0555, true}, // the link stays as it is
    };
    for (const auto& row : rows) {
        setModes(row.file, row.folder, row.folderOfLink);
        for (const std::string& one : {path, link}) {
            const FileText read = readFileText(one);
            EXPECT_EQ(read.text, "text");
            EXPECT_EQ(read.isWritable, row.isWritable) << one << std::oct << row.folder;
        }
    }
    setModes(0644, 0755, 0755);
}

TEST_F(AFileText, OfAnotherIsNotWritableInAFolderThatKeepsTheirFiles) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can become somebody else";
    }
    constexpr uid_t somebody = 4711;
    chmod(m_folder.c_str(), 0755);
    setModes(0666, 01777, 0755);
    ASSERT_EQ(seteuid(somebody), 0);
    const bool isWritable = readFileText(path).isWritable;
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_FALSE(isWritable);
    setModes(0666, 0777, 0755);
    ASSERT_EQ(seteuid(somebody), 0);
    const bool isWritableInPlainFolder = readFileText(path).isWritable;
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_TRUE(isWritableInPlainFolder);
}

} // namespace plenzo
