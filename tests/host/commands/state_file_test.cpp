#include "breakable_files.h"
#include "host/commands/state_file.h"
#include "host/files/file_text.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <fstream>

namespace plenzo {

namespace {

class AStateFile : public testing::Test {
protected:
    void put(const std::string& text) const {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
    }
    std::string write(const std::string& name) {
        return writeStateFile(files, path, {Dictionary{{Key("name"), name}}});
    }
    std::string name() {
        const StateFile state = readStateFile(files, path);
        EXPECT_EQ(state.setAside, "");
        return state.dictionaries.empty()
                   ? std::string()
                   : std::string(state.dictionaries[0].stringForKey("name").value_or(""));
    }

    TemporaryFolder folder;
    std::string path = folder.file("commands");
    BreakableFiles files;
};

} // namespace

TEST_F(AStateFile, ThatIsDamagedIsSetAsideBeforeAnotherTakesItsPlace) {
    EXPECT_EQ(write("first"), "");
    const std::string whole = readFileText(path).text;
    const std::string damaged[] = {whole.substr(0, whole.size() - 5), "no list"};
    const std::string aside[] = {path + ".damaged", path + ".damaged-2"};
    for (const int index : {0, 1}) {
        put(damaged[index]);
        const StateFile state = readStateFile(files, path);
        EXPECT_TRUE(state.dictionaries.empty());
        EXPECT_EQ(state.setAside, aside[index]);
        EXPECT_EQ(write("next"), "");
    }
    EXPECT_EQ(name(), "next");
    EXPECT_EQ(readFileText(aside[0]).text, damaged[0]);
    EXPECT_EQ(readFileText(aside[1]).text, damaged[1]);
}

TEST_F(AStateFile, ThatIsNotThereOrEmptyIsNotDamaged) {
    EXPECT_EQ(name(), "");
    put("");
    EXPECT_EQ(name(), "");
    EXPECT_EQ(readStateFile(files, "").setAside, "");
}

TEST_F(AStateFile, StaysWhereItIsWhereItCannotBeMoved) {
    put("no list");
    files.lastStep = -1;
    EXPECT_EQ(readStateFile(files, path).setAside, "");
    EXPECT_EQ(readFileText(path).text, "no list");
}

} // namespace plenzo
