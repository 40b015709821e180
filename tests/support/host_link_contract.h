#pragma once

#include "platform/host_link.h"
#include "support/journal.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>

namespace plenzo {

/// Notes what the host sends: "version 1", "2 records", "delta of 1", … It may do something more
/// when it is told.
class ProtocolJournal final : public PlenzoAlarmProtocol {
public:
    void version(std::string_view version) override { note("version " + std::string(version)); }
    void alarmsUpdated(Array eventDicts, bool delta) override {
        const std::string count = std::to_string(eventDicts.size());
        note(delta ? "delta of " + count : count + " records");
    }
    void sourceListUpdated(const Array& sourceNodes) override {
        note(std::to_string(sourceNodes.size()) + " calendars");
    }
    void prefsUpdated(const Dictionary& preferences) override {
        note(std::to_string(preferences.size()) + " preferences");
    }
    void weatherUpdated(const Dictionary& weather) override {
        note(std::to_string(weather.size()) + " of weather");
    }
    void prepareToStop() override { note("prepare to stop"); }

    Journal heard;
    std::function<void()> whenTold = [] {};

private:
    void note(const std::string& what) {
        heard.push_back(what);
        whenTold();
    }
};

/// What every implementation of HostLink keeps to. A subclass gives the link and plays the host.
class HostLinkContract {
public:
    HostLinkContract() = default;
    HostLinkContract(const HostLinkContract&) = delete;
    HostLinkContract& operator=(const HostLinkContract&) = delete;
    virtual ~HostLinkContract() = default;

    virtual HostLink& link() = 0;
    /// Sends each of the six operations once, the batch as a full one of two records and as a delta
    /// of one, in the order of the class.
    virtual void sendEverything() = 0;
    /// Returns when what was sent has reached the exported object, if it ever does.
    virtual void settle() = 0;

    void handsOnEachOperationInTheOrderOfTheHost() {
        link().open(m_agent);
        sendEverything();
        sendEverything();
        settle();
        Journal twice = everything;
        twice.insert(twice.end(), everything.begin(), everything.end());
        EXPECT_EQ(m_agent.heard, twice);
        link().close();
    }

    void handsOnWhatWasSentBeforeItWasOpen() {
        sendEverything();
        EXPECT_THAT(m_agent.heard, testing::IsEmpty());
        link().open(m_agent);
        settle();
        EXPECT_EQ(m_agent.heard, everything);
        link().close();
    }

    void handsOnNothingOnceItIsClosed() {
        link().open(m_agent);
        m_agent.whenTold = [this] { link().close(); };
        sendEverything();
        settle();
        EXPECT_THAT(m_agent.heard, testing::ElementsAre(everything.front()));
    }

private:
    const Journal everything{"version 1",     "2 records",    "delta of 1",     "1 calendars",
                             "1 preferences", "1 of weather", "prepare to stop"};
    ProtocolJournal m_agent;
};

} // namespace plenzo
