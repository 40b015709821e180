#include "host/agent_link.h"
#include "linux/wire/sealed_memory_file.h"
#include "linux/wire/value_decoder.h"
#include "support/private_bus.h"

#include <gmock/gmock.h>
#include <sdbus-c++/sdbus-c++.h>

#include <functional>
#include <vector>

using testing::ElementsAre;

namespace plenzo {

namespace {

constexpr const char* agentName = "org.plenzo.PlenzoAlarm";
constexpr const char* protocolInterface = "org.plenzo.PlenzoAlarmProtocol";

/// An agent that writes down what it is told.
class RecordingAgent {
public:
    explicit RecordingAgent(sdbus::IConnection& connection)
        : m_object(sdbus::createObject(connection, "/org/plenzo/PlenzoAlarm")) {
        on("Version", "s", [this](sdbus::MethodCall& call) {
            std::string version;
            call >> version;
            heard.push_back("Version " + version);
        });
        on("PrefsUpdated", "a{sv}", [this](sdbus::MethodCall& call) {
            preferences = readDictionary(call).value_or(Dictionary());
            heard.emplace_back("PrefsUpdated");
        });
        on("SourceListUpdated", "aa{sv}", [this](sdbus::MethodCall& call) {
            sourceList = readDictionaries(call).value_or(Array());
            heard.emplace_back("SourceListUpdated");
        });
        on("AlarmsUpdated", "aa{sv}b", [this](sdbus::MethodCall& call) {
            events = readDictionaries(call).value_or(Array());
            bool isDelta = true;
            call >> isDelta;
            heard.emplace_back(isDelta ? "AlarmsUpdated delta" : "AlarmsUpdated");
        });
        on("AlarmsUpdatedFromFile", "hb", [this](sdbus::MethodCall& call) {
            sdbus::UnixFd file;
            bool isDelta = true;
            call >> file >> isDelta;
            events = *readSealedMemoryFile(file.get()).value_or(Value(Array())).array();
            heard.emplace_back(isDelta ? "AlarmsUpdatedFromFile delta" : "AlarmsUpdatedFromFile");
        });
        m_object->registerSignal("org.plenzo.DistributedNotifications", "Posted", "s");
        m_object->finishRegistration();
    }

    void post(const std::string& name) {
        m_object->emitSignal("Posted")
            .onInterface("org.plenzo.DistributedNotifications")
            .withArguments(name);
    }

    std::vector<std::string> heard;
    Dictionary preferences;
    Array sourceList;
    Array events;
    bool areAllOneWay = true;

private:
    void on(const char* name, const char* signature,
            const std::function<void(sdbus::MethodCall&)>& read) {
        m_object->registerMethod(protocolInterface, name, signature, "",
                                 [this, read](sdbus::MethodCall call) {
                                     areAllOneWay = areAllOneWay && call.doesntExpectReply();
                                     read(call);
                                 });
    }

    std::unique_ptr<sdbus::IObject> m_object;
};

class AnAgentLink : public testing::Test {
protected:
    AnAgentLink()
        : m_agentSide(sdbus::createSessionBusConnectionWithAddress(m_bus.address())),
          m_hostSide(sdbus::createSessionBusConnectionWithAddress(m_bus.address())),
          m_agent(*m_agentSide),
          m_link(*m_hostSide, {[this] { m_events.emplace_back("launched"); },
                               [this] { m_events.emplace_back("other version"); },
                               [this](const std::string&) { m_events.emplace_back("no start"); }}) {
    }

    /// Handles what has arrived on both sides, in order, until `isDone`. The bus delivers what the
    /// other side sent before it answers a call of this side.
    void exchange(const std::function<bool()>& isDone) {
        while (!isDone()) {
            roundTrip(*m_agentSide);
            roundTrip(*m_hostSide);
        }
    }

    static void roundTrip(sdbus::IConnection& connection) {
        auto bus = sdbus::createProxy(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus");
        std::string id;
        bus->callMethod("GetId").onInterface("org.freedesktop.DBus").storeResultsTo(id);
        while (connection.processPendingRequest()) {
        }
    }

    AgentPush pushOf(int count) const {
        AgentPush push;
        push.preferences = {{Key("alarmsIssueAlarms"), true}};
        push.sourceList = {Dictionary{{Key("uid"), "calendars"}}};
        for (int number = 0; number < count; ++number) {
            push.events.append(Dictionary{{Key("uid"), "e" + std::to_string(number)}});
        }
        return push;
    }

    PrivateBus m_bus;
    std::unique_ptr<sdbus::IConnection> m_agentSide;
    std::unique_ptr<sdbus::IConnection> m_hostSide;
    std::vector<std::string> m_events;
    RecordingAgent m_agent;
    AgentLink m_link;
};

} // namespace

TEST_F(AnAgentLink, PushesEverythingInOrderAndExpectsNoReply) {
    m_agentSide->requestName(agentName);
    ASSERT_TRUE(m_link.isAgentPresent());
    const AgentPush push = pushOf(3);
    ASSERT_TRUE(m_link.push(push));
    exchange([this] { return m_agent.heard.size() == 4; });
    EXPECT_THAT(m_agent.heard, ElementsAre("Version " PLENZO_VERSION "t", "PrefsUpdated",
                                           "SourceListUpdated", "AlarmsUpdated"));
    EXPECT_EQ(m_agent.preferences, push.preferences);
    EXPECT_EQ(m_agent.sourceList, push.sourceList);
    EXPECT_EQ(m_agent.events, push.events);
    EXPECT_TRUE(m_agent.areAllOneWay);
}

TEST_F(AnAgentLink, SendsALargeBatchInAFile) {
    m_agentSide->requestName(agentName);
    const AgentPush push = pushOf(30'000);
    ASSERT_TRUE(m_link.push(push));
    exchange([this] { return m_agent.heard.size() == 4; });
    EXPECT_EQ(m_agent.heard.back(), "AlarmsUpdatedFromFile");
    EXPECT_EQ(m_agent.events, push.events);
}

TEST_F(AnAgentLink, TellsTheAnnouncementsApart) {
    m_agentSide->requestName(agentName);
    m_agent.post("PlenzoAlarm Version");
    m_agent.post("PlenzoAlarm Launched");
    m_agent.post("PlenzoAlarm Relaunch");
    exchange([this] { return m_events.size() == 2; });
    EXPECT_THAT(m_events, ElementsAre("launched", "other version"));
}

TEST_F(AnAgentLink, SaysThatTheBusCannotStartTheAgent) {
    EXPECT_FALSE(m_link.isAgentPresent());
    m_link.startAgent();
    exchange([this] { return !m_events.empty(); });
    EXPECT_THAT(m_events, ElementsAre("no start"));
}

} // namespace plenzo
