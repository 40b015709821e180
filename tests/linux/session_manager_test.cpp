#include "linux/session_manager.h"
#include "support/environment_variable.h"
#include "support/power_journal.h"
#include "support/served_bus.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

constexpr const char* managerInterface = "org.gnome.SessionManager";
constexpr const char* clientInterface = "org.gnome.SessionManager.ClientPrivate";
constexpr const char* ourPath = "/org/gnome/SessionManager/Client7";
constexpr const char* anotherPath = "/org/gnome/SessionManager/Client8";

/// The session manager's part: one object for itself, and one for each of two clients.
class PlayedSessionManager {
public:
    PlayedSessionManager(ServedBus& bus, std::vector<std::string>& journal)
        : m_bus(bus), m_journal(journal),
          m_service(bus, managerInterface, "/org/gnome/SessionManager"),
          m_ours(makeClient(ourPath)), m_another(makeClient(anotherPath)) {
        m_service.object().registerMethod(
            managerInterface, "RegisterClient", "ss", "o", [this](sdbus::MethodCall call) {
                std::string application;
                std::string startup;
                call >> application >> startup;
                m_journal.push_back("register " + application + " " + startup);
                m_client = call.getSender();
                auto reply = call.createReply();
                reply << sdbus::ObjectPath(ourPath);
                reply.send();
            });
        m_service.begin();
    }

    template <typename... Arguments>
    void tell(const char* signal, const Arguments&... arguments) {
        sendFrom(*m_ours, signal, arguments...);
    }
    template <typename... Arguments>
    void tellAnother(const char* signal, const Arguments&... arguments) {
        sendFrom(*m_another, signal, arguments...);
    }
    void roundTrip() { m_bus.roundTrip(m_service.connection()); }

private:
    std::unique_ptr<sdbus::IObject> makeClient(const char* path) {
        auto client = sdbus::createObject(m_service.connection().connection(), path);
        client->registerMethod(clientInterface, "EndSessionResponse", "bs", "",
                               [this](sdbus::MethodCall call) {
                                   bool isOk = false;
                                   std::string reason;
                                   call >> isOk >> reason;
                                   m_journal.push_back((isOk ? "ok" : "not ok") + reason);
                                   call.createReply().send();
                               });
        client->finishRegistration();
        return client;
    }

    template <typename... Arguments>
    void sendFrom(sdbus::IObject& client, const char* name, const Arguments&... arguments) {
        sdbus::Signal signal = client.createSignal(clientInterface, name);
        signal.setDestination(m_client);
        (void)(signal << ... << arguments);
        client.emitSignal(signal);
        roundTrip();
    }

    ServedBus& m_bus;
    std::vector<std::string>& m_journal;
    PlayedService m_service;
    std::unique_ptr<sdbus::IObject> m_ours;
    std::unique_ptr<sdbus::IObject> m_another;
    std::string m_client;
};

class ASessionManager : public testing::Test {
protected:
    static constexpr std::uint32_t flags = 0;

    /// What came before is known to both then.
    void settle() {
        for (int trip = 0; trip < 3; ++trip) {
            m_bus.roundTrip(*m_connection);
            if (m_manager) {
                m_manager->roundTrip();
            }
        }
    }
    void start() {
        m_manager.emplace(m_bus, m_power.heard);
        settle();
    }
    template <typename... Arguments>
    void tell(const char* signal, Arguments... arguments) {
        m_manager->tell(signal, arguments...);
        settle();
    }
    std::vector<std::string> heard() { return std::exchange(m_power.heard, {}); }

    EnvironmentVariable m_startup{"DESKTOP_AUTOSTART_ID", "startup1"};
    ServedBus m_bus;
    std::unique_ptr<BusOnMainLoop> m_connection = m_bus.connect();
    PowerJournal m_power;
    SessionManager m_client{*m_connection, m_power, [this] { m_power.heard.emplace_back("stop"); }};
    std::optional<PlayedSessionManager> m_manager;
};

TEST_F(ASessionManager, GetsToKnowTheAgentByItsStartupIdentifierOnce) {
    EXPECT_EQ(std::getenv("DESKTOP_AUTOSTART_ID"), nullptr) << "what we start must not have it";
    start();
    EXPECT_THAT(heard(), ElementsAre("register org.plenzo.PlenzoAlarm startup1"));
    m_manager.reset();
    settle();
    start();
    EXPECT_THAT(heard(), ElementsAre("register org.plenzo.PlenzoAlarm "));
}

TEST_F(ASessionManager, MayAskAndGetsNothingButConsent) {
    start();
    heard();
    tell("QueryEndSession", flags);
    tell("CancelEndSession");
    EXPECT_THAT(heard(), ElementsAre("ok"));
}

TEST_F(ASessionManager, IsAnsweredWhenTheObserverHasReturned) {
    start();
    heard();
    tell("EndSession", flags);
    EXPECT_THAT(heard(), ElementsAre("end", "ok"));
    tell("EndSession", flags);
    EXPECT_THAT(heard(), ElementsAre("ok")) << "it waits for each";
    tell("CancelEndSession");
    tell("CancelEndSession");
    EXPECT_THAT(heard(), ElementsAre("no end"));
    tell("EndSession", flags);
    tell("Stop");
    EXPECT_THAT(heard(), ElementsAre("end", "ok", "stop"));
}

TEST_F(ASessionManager, IsNotHeardWhenItSpeaksToAnotherClient) {
    start();
    heard();
    m_manager->tellAnother("EndSession", flags);
    m_manager->tellAnother("Stop");
    settle();
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(ASessionManager, IsNotWhoeverSendsItsSignals) {
    start();
    heard();
    PlayedService stranger(m_bus, "org.test.Stranger", ourPath);
    stranger.send(clientInterface, "Stop", m_connection->connection().getUniqueName());
    settle();
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(ASessionManager, KnowsNothingOfAnEndThatItsPredecessorAnnounced) {
    start();
    tell("EndSession", flags);
    m_manager.reset();
    settle();
    heard();
    start();
    EXPECT_THAT(heard(), ElementsAre("register org.plenzo.PlenzoAlarm ", "no end"));
    tell("EndSession", flags);
    EXPECT_THAT(heard(), ElementsAre("end", "ok"));
}

} // namespace
} // namespace plenzo
