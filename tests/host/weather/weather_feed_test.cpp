#include "host/weather/weather_feed.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace plenzo {

namespace {

/// A feed whose sent records are known by their places; one without any is "-".
class AWeatherFeed : public testing::Test {
protected:
    AWeatherFeed()
        : m_feed(m_loop, CalendarZone(),
                 {[this](const Dictionary& record) {
                      m_sent.emplace_back(record.stringForKey("location").value_or("-"));
                  },
                  [this](const std::string& problem) { m_problems.push_back(problem); }}) {}

    std::string write(const std::string& name, const std::string& text) {
        std::ofstream(m_folder.file(name)) << text;
        return m_folder.file(name);
    }

    std::string writeWeather(const std::string& name, const std::string& location) {
        return write(name, "{\"location\": \"" + location + "\", \"forecast\": []}");
    }

    TemporaryFolder m_folder;
    HostLoop m_loop;
    std::vector<std::string> m_sent;
    std::vector<std::string> m_problems;
    WeatherFeed m_feed;
};

} // namespace

TEST_F(AWeatherFeed, SendsItsRecordWithEveryFullUpdate) {
    const std::string path = writeWeather("w", "Oslo");
    m_feed.sendAll(path);
    m_feed.sendAll(path);
    writeWeather("w", "Rome");
    m_feed.sendAll(path);
    EXPECT_THAT(m_sent, ElementsAre("Oslo", "Oslo", "Rome"));
    EXPECT_THAT(m_problems, IsEmpty());
}

TEST_F(AWeatherFeed, WithoutAFileSaysNothing) {
    m_feed.sendAll("");
    m_feed.sendChanges("");
    EXPECT_THAT(m_sent, IsEmpty());
}

TEST_F(AWeatherFeed, SendsWhatAnotherFileHas) {
    const std::string first = writeWeather("first", "Oslo");
    m_feed.sendAll(first);
    m_feed.sendChanges(first);
    m_feed.sendChanges(writeWeather("same", "Oslo"));
    m_feed.sendChanges(writeWeather("other", "Rome"));
    m_feed.sendChanges("");
    EXPECT_THAT(m_sent, ElementsAre("Oslo", "Rome", "-"));
}

TEST_F(AWeatherFeed, KeepsTheLastRecordWhileTheFileIsDamaged) {
    const std::string path = writeWeather("w", "Oslo");
    m_feed.sendAll(path);
    write("w", "{\"location\": \"Ro");
    m_feed.sendAll(path);
    EXPECT_THAT(m_sent, ElementsAre("Oslo", "Oslo"));
    EXPECT_THAT(m_problems, ElementsAre(StartsWith(path + ":1:17: is no JSON: ")));
    std::filesystem::remove(path);
    m_feed.sendAll(path);
    EXPECT_THAT(m_sent, ElementsAre("Oslo", "Oslo", "-"));
}

TEST_F(AWeatherFeed, LeavesTheAgentWhatItHasUntilTheFileIsUnderstood) {
    const std::string path = write("w", "[]");
    m_feed.sendAll(path);
    EXPECT_THAT(m_sent, IsEmpty());
    writeWeather("w", "Oslo");
    m_feed.sendAll(path);
    EXPECT_THAT(m_sent, ElementsAre("Oslo"));
}

} // namespace plenzo
