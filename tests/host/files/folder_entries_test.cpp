#include "host/files/folder_entries.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace fs = std::filesystem;

namespace plenzo {

TEST(FolderEntries, TellLinksAndWhatLeadsToAFolder) {
    std::string pattern = (fs::temp_directory_path() / "plenzo-entries-XXXXXX").string();
    const fs::path folder = mkdtemp(pattern.data());
    fs::create_directory(folder / "folder");
    std::ofstream(folder / ".hidden");
    fs::create_symlink("folder", folder / "link to folder");
    fs::create_symlink(".hidden", folder / "link to file");
    fs::create_symlink("nothing", folder / "link to nothing");

    std::map<std::string, std::pair<bool, bool>> seen;
    const std::error_code error = visitFolder(folder.string(), [&](const FolderEntry& entry) {
        seen[std::string(entry.name)] = {entry.isLink, entry.leadsToFolder};
    });
    fs::remove_all(folder);

    EXPECT_FALSE(error);
    EXPECT_EQ(seen, (std::map<std::string, std::pair<bool, bool>>{
                        {"folder", {false, true}},
                        {".hidden", {false, false}},
                        {"link to folder", {true, true}},
                        {"link to file", {true, false}},
                        {"link to nothing", {true, false}},
                    }));
    EXPECT_EQ(visitFolder(folder.string(), [](const FolderEntry&) { ADD_FAILURE(); }),
              std::errc::no_such_file_or_directory);
}

} // namespace plenzo
