#include "linux/file_user_defaults.h"
#include "linux/whole_file.h"
#include "propertylist/binary_property_list.h"
#include "support/fake_user_defaults.h"
#include "support/temporary_folder.h"
#include "support/user_defaults_contract.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string_view>

namespace plenzo {
namespace {

class SettingsInAFile : public testing::Test {
protected:
    [[nodiscard]] Value stored() const {
        const auto bytes = readWholeFile(path);
        return bytes ? readBinaryPropertyList(*bytes).value_or(Value("damaged")) : Value("missing");
    }
    void write(std::string_view text) const {
        ASSERT_TRUE(replaceWholeFile(path, std::as_bytes(std::span(text))));
    }

    const TemporaryFolder folder;
    const std::string path = folder.file("PlenzoAlarm/Preferences.plist");
};

TEST(SettingsInMemory, KeepToTheContract) {
    FakeUserDefaults defaults;
    keepsToTheContractOfUserDefaults(defaults);
}

TEST_F(SettingsInAFile, KeepToTheContract) {
    FileUserDefaults defaults(path);
    keepsToTheContractOfUserDefaults(defaults);
}

TEST_F(SettingsInAFile, AreThereForTheNextProgramWithoutTheRegisteredOnes) {
    const Dictionary pushed{{Key("alarmsIssueAlarms"), true}, {Key("unknown"), Array{1.5, "x"}}};
    {
        FileUserDefaults defaults(path);
        defaults.registerDefaults({{Key("alarmsSnoozeSeconds"), 300}});
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(stored(), Value("missing")) << "nothing was stored yet";
        defaults.setValues(pushed);
        EXPECT_TRUE(defaults.synchronize());
    }
    EXPECT_EQ(stored(), Value(pushed));
    const FileUserDefaults next(path);
    EXPECT_EQ(next.valueForKey("unknown"), Value(Array{1.5, "x"}));
}

TEST_F(SettingsInAFile, AreWrittenOnlyWhenTheyChanged) {
    FileUserDefaults defaults(path);
    defaults.setValues({{Key("a"), 1}});
    ASSERT_TRUE(defaults.synchronize());
    std::filesystem::remove(path);
    defaults.setValues({{Key("a"), 1}});
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(stored(), Value("missing"));
}

TEST_F(SettingsInAFile, CountAsEmptyWhenDamagedAndAreKeptAside) {
    for (const std::string_view text : {"bplist00 but not really", "", "bplist00"}) {
        write(text);
        FileUserDefaults defaults(path);
        defaults.registerDefaults({{Key("a"), 1}});
        EXPECT_EQ(defaults.integerForKey("a"), 1);
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(readWholeFile(path)->size(), text.size()) << "left alone until there is need";

        defaults.setValues({{Key("b"), 2}});
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(stored(), Value(Dictionary{{Key("b"), 2}}));
    }
    EXPECT_TRUE(std::filesystem::exists(path + ".damaged"));
    EXPECT_TRUE(std::filesystem::exists(path + ".damaged-2"));
    EXPECT_TRUE(std::filesystem::exists(path + ".damaged-3"));
}

TEST_F(SettingsInAFile, StayInMemoryWhileTheyCannotBeWritten) {
    const std::string_view text = "in the way";
    const std::string blocker = folder.file("PlenzoAlarm");
    ASSERT_TRUE(replaceWholeFile(blocker, std::as_bytes(std::span(text))));
    FileUserDefaults defaults(path);
    defaults.setValues({{Key("a"), 1}});
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(defaults.integerForKey("a"), 1);
    std::filesystem::remove(blocker);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(stored(), Value(Dictionary{{Key("a"), 1}}));
}

} // namespace
} // namespace plenzo
