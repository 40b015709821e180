#include "host/configuration/configuration_grace.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace plenzo {

namespace {

using namespace std::chrono_literals;

class TheGraceOfAConfiguration : public testing::Test {
protected:
    bool bears(SteadyTime now) { return grace.bears(file, now); }
    void write(const char* text) const { std::ofstream(file, std::ios::trunc) << text; }

    TemporaryFolder folder;
    std::string file = folder.file("config.toml");
    ConfigurationGrace grace;
};

} // namespace

TEST_F(TheGraceOfAConfiguration, LastsFiveSecondsFromWhenTheFileWasMissed) {
    write("# calendars");
    EXPECT_FALSE(bears(0s));
    std::filesystem::remove(file);
    EXPECT_TRUE(bears(10s));
    EXPECT_EQ(grace.end(), SteadyTime(15s));
    write("");
    EXPECT_TRUE(bears(14'900ms));
    EXPECT_FALSE(bears(15s));
    EXPECT_FALSE(bears(15'001ms));
    EXPECT_EQ(grace.end(), std::nullopt);
    write("# calendars");
    EXPECT_FALSE(bears(20s));
    write("");
    EXPECT_TRUE(bears(21s));
    write("# other calendars");
    EXPECT_FALSE(bears(21'500ms));
    EXPECT_EQ(grace.end(), std::nullopt);
}

TEST_F(TheGraceOfAConfiguration, IsNotForWhatNeverWasThere) {
    EXPECT_FALSE(bears(0s));
    write("");
    EXPECT_FALSE(bears(1s));
}

} // namespace plenzo
