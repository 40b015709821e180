#include "linux/agent_address.h"
#include "linux/disposal_on_bus_thread.h"
#include "linux/distributed_notifications_on_bus.h"
#include "linux/host_link_on_bus.h"
#include "linux/wire/value_encoder.h"
#include "support/disposal_contract.h"
#include "support/distributed_notifications_contract.h"
#include "support/fake_desktop.h"
#include "support/host_link_contract.h"
#include "support/served_bus.h"

#include <sdbus-c++/sdbus-c++.h>

namespace plenzo {
namespace {

const Array records{Dictionary{{"uid", "a"}}, Dictionary{{"uid", "b"}}};
const Array oneRecord{Dictionary{{"uid", "a"}}};
const Dictionary entry{{"key", 1}};

class FakeLinkUnderContract final : public HostLinkContract {
public:
    HostLink& link() override { return m_link; }
    void sendEverything() override {
        m_link.send([](PlenzoAlarmProtocol& agent) { agent.version("1"); });
        m_link.send([](PlenzoAlarmProtocol& agent) { agent.alarmsUpdated(records, false); });
        m_link.send([](PlenzoAlarmProtocol& agent) { agent.alarmsUpdated(oneRecord, true); });
        m_link.send([](PlenzoAlarmProtocol& agent) { agent.sourceListUpdated(oneRecord); });
        m_link.send([](PlenzoAlarmProtocol& agent) { agent.prefsUpdated(entry); });
        m_link.send([](PlenzoAlarmProtocol& agent) { agent.weatherUpdated(entry); });
        m_link.send([](PlenzoAlarmProtocol& agent) { agent.prepareToStop(); });
    }
    void settle() override {}

private:
    Journal m_journal;
    FakeHostLink m_link{m_journal};
};

/// A bus, the agent's thread on it, and a program that talks to it.
class ThreadedBus {
public:
    /// Returns when the thread has handled what the program sent before, and the loop has done
    /// what came of it.
    void settle() {
        m_bus.roundTrip(*m_program);
        bool hasHandled = false;
        auto ping = m_agent->createMethodCall("org.freedesktop.DBus.Peer", "Ping");
        m_agent->callMethod(
            ping, [&hasHandled](sdbus::MethodReply&, const sdbus::Error*) { hasHandled = true; });
        m_program->sent();
        m_bus.runUntil([&hasHandled] { return hasHandled; });
        bool isDone = false;
        m_bus.loop().post([&isDone] { isDone = true; });
        m_bus.runUntil([&isDone] { return isDone; });
    }

    ServedBus& bus() { return m_bus; }
    BusThread& thread() { return m_thread; }
    BusOnMainLoop& program() { return *m_program; }
    sdbus::IProxy& agent() { return *m_agent; }

private:
    std::unique_ptr<sdbus::IConnection> agentConnection() {
        auto connection = sdbus::createSessionBusConnectionWithAddress(m_bus.daemon().address());
        connection->requestName(agentaddress::busName);
        return connection;
    }

    ServedBus m_bus;
    BusThread m_thread{agentConnection()};
    std::unique_ptr<BusOnMainLoop> m_program = m_bus.connect();
    std::unique_ptr<sdbus::IProxy> m_agent = sdbus::createProxy(
        m_program->connection(), agentaddress::busName, agentaddress::objectPath);
};

class RealLinkUnderContract final : public HostLinkContract {
public:
    RealLinkUnderContract() = default;
    RealLinkUnderContract(const RealLinkUnderContract&) = delete;
    RealLinkUnderContract& operator=(const RealLinkUnderContract&) = delete;
    ~RealLinkUnderContract() override { m_bus.thread().stop(); }
    HostLink& link() override { return m_link; }
    void sendEverything() override {
        send("Version", [](sdbus::MethodCall& call) { call << "1"; });
        sendBatch(records, false);
        sendBatch(oneRecord, true);
        send("SourceListUpdated",
             [](sdbus::MethodCall& call) { ASSERT_TRUE(appendDictionaries(call, oneRecord)); });
        for (const char* method : {"PrefsUpdated", "WeatherUpdated"}) {
            send(method,
                 [](sdbus::MethodCall& call) { ASSERT_TRUE(appendDictionary(call, entry)); });
        }
        send("PrepareToStop", [](sdbus::MethodCall&) {});
    }
    void settle() override { m_bus.settle(); }

private:
    void sendBatch(const Array& batch, bool delta) {
        send("AlarmsUpdated", [&](sdbus::MethodCall& call) {
            ASSERT_TRUE(appendDictionaries(call, batch));
            call << delta;
        });
    }
    void send(const char* method, const std::function<void(sdbus::MethodCall&)>& fill) {
        auto call = m_bus.agent().createMethodCall(agentaddress::protocolInterface, method);
        fill(call);
        call.dontExpectReply();
        m_bus.agent().callMethod(call);
        m_bus.program().sent();
    }

    ThreadedBus m_bus;
    HostLinkOnBus m_link{m_bus.bus().loop(), m_bus.thread()};
};

template <typename Contract>
class AHostLink : public testing::Test {
protected:
    Contract contract;
};

using Links = testing::Types<FakeLinkUnderContract, RealLinkUnderContract>;
TYPED_TEST_SUITE(AHostLink, Links);

TYPED_TEST(AHostLink, HandsOnEachOperationInTheOrderOfTheHost) {
    this->contract.handsOnEachOperationInTheOrderOfTheHost();
}

TYPED_TEST(AHostLink, HandsOnWhatWasSentBeforeItWasOpen) {
    this->contract.handsOnWhatWasSentBeforeItWasOpen();
}

TYPED_TEST(AHostLink, HandsOnNothingOnceItIsClosed) {
    this->contract.handsOnNothingOnceItIsClosed();
}

class FakeNotificationsUnderContract final : public DistributedNotificationsContract {
public:
    DistributedNotifications& notifications() override { return m_notifications; }
    std::vector<std::string> heard(std::size_t /*count*/) override {
        std::vector<std::string> names;
        for (const std::string& posted : m_journal) {
            names.push_back(posted.substr(std::string("post ").size()));
        }
        return names;
    }

private:
    Journal m_journal;
    FakeDistributedNotifications m_notifications{m_journal};
};

class RealNotificationsUnderContract final : public DistributedNotificationsContract {
public:
    RealNotificationsUnderContract() {
        m_bus.agent().registerSignalHandler(agentaddress::notificationsInterface, "Posted",
                                            [this](sdbus::Signal signal) {
                                                std::string name;
                                                signal >> name;
                                                m_heard.push_back(name);
                                            });
        m_bus.agent().finishRegistration();
        m_bus.bus().roundTrip(m_bus.program());
        m_bus.thread().start([] {});
    }
    RealNotificationsUnderContract(const RealNotificationsUnderContract&) = delete;
    RealNotificationsUnderContract& operator=(const RealNotificationsUnderContract&) = delete;
    ~RealNotificationsUnderContract() override { m_bus.thread().stop(); }
    DistributedNotifications& notifications() override { return m_notifications; }
    std::vector<std::string> heard(std::size_t count) override {
        m_bus.bus().runUntil([this, count] { return m_heard.size() >= count; });
        return m_heard;
    }

private:
    ThreadedBus m_bus;
    DistributedNotificationsOnBus m_notifications{m_bus.thread()};
    std::vector<std::string> m_heard;
};

template <typename Contract>
class TheAnnouncements : public testing::Test {
protected:
    Contract contract;
};

using Announcements =
    testing::Types<FakeNotificationsUnderContract, RealNotificationsUnderContract>;
TYPED_TEST_SUITE(TheAnnouncements, Announcements);

TYPED_TEST(TheAnnouncements, AreNamesAsTheyStandInOrder) {
    this->contract.announceNamesAsTheyStandInOrder();
}

class FakeDisposalUnderContract final : public DisposalContract {
public:
    Disposal& disposal() override { return m_disposal; }
    void settle() override {}

private:
    FakeDisposal m_disposal;
};

class RealDisposalUnderContract final : public DisposalContract {
public:
    RealDisposalUnderContract() {
        m_bus.thread().start([] {});
    }
    Disposal& disposal() override { return m_disposal; }
    void settle() override { m_bus.thread().stop(); }

private:
    ThreadedBus m_bus;
    DisposalOnBusThread m_disposal{m_bus.thread()};
};

template <typename Contract>
class ADisposal : public testing::Test {
protected:
    Contract contract;
};

using Disposals = testing::Types<FakeDisposalUnderContract, RealDisposalUnderContract>;
TYPED_TEST_SUITE(ADisposal, Disposals);

TYPED_TEST(ADisposal, DropsEachShareOnce) {
    this->contract.dropsEachShareOnce();
}

} // namespace
} // namespace plenzo
