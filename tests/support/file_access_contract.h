#pragma once

#include "platform/file_access.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// What every implementation of FileAccess keeps to. A subclass has files come and go, and plays
/// the host who names them.
class FileAccessContract {
public:
    FileAccessContract() = default;
    FileAccessContract(const FileAccessContract&) = delete;
    FileAccessContract& operator=(const FileAccessContract&) = delete;
    virtual ~FileAccessContract() = default;

    virtual FileAccess& access() = 0;
    virtual void put(const std::string& path) = 0;
    virtual void remove(const std::string& path) = 0;
    /// Of a file that is there.
    virtual std::vector<std::byte> transportData(const std::string& path) = 0;

    void findsTheFileThatTheHostNames() {
        put("/plan");
        const auto data = transportData("/plan");
        EXPECT_EQ(access().secureFileFromTransportData(data), "/plan");
        EXPECT_EQ(access().secureFileFromTransportData({}), std::nullopt);
        remove("/plan");
        EXPECT_EQ(access().secureFileFromTransportData(data), std::nullopt);
    }

    void keepsTheAccessThatWasSavedUntilTheFileIsGone() {
        put("/plan");
        put("/list");
        EXPECT_EQ(kept("/plan"), std::nullopt);
        EXPECT_TRUE(access().saveSecureFile("/plan"));
        EXPECT_EQ(kept("/plan"), "/plan");
        EXPECT_EQ(kept("/list"), std::nullopt);
        access().cleanSecureFiles();
        EXPECT_EQ(kept("/plan"), "/plan");
        remove("/plan");
        access().cleanSecureFiles();
        EXPECT_EQ(kept("/plan"), std::nullopt);
    }

    void givesAFileThatCanBeReadWithoutKeepingIt() {
        put("/plan");
        const auto path = access().secureFileFromPath("/plan", FileAccess::CreateIfFileExists::Yes);
        ASSERT_EQ(path, "/plan");
        EXPECT_TRUE(access().startAccessing(*path));
        access().stopAccessing(*path);
        EXPECT_EQ(kept("/plan"), std::nullopt);
        remove("/plan");
        EXPECT_EQ(access().secureFileFromPath("/plan", FileAccess::CreateIfFileExists::Yes),
                  std::nullopt);
    }

    void knowsWhatIsSavedTogetherAtOnceAndAfterwards() {
        put("/plan");
        Handle together = access().changeTogether();
        EXPECT_TRUE(access().saveSecureFile("/plan"));
        EXPECT_EQ(kept("/plan"), "/plan");
        together.reset();
        EXPECT_EQ(kept("/plan"), "/plan");
    }

private:
    std::optional<std::string> kept(const std::string& path) {
        return access().secureFileFromPath(path, FileAccess::CreateIfFileExists::No);
    }
};

} // namespace plenzo
