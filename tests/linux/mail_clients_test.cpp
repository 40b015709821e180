#include "called_program.h"
#include "linux/mail_clients_of_desktop.h"
#include "private_desktop.h"
#include "support/fake_mail_clients.h"
#include "support/mail_clients_contract.h"
#include "support/running_loop.h"

#include <gtest/gtest.h>

#include <memory>

namespace plenzo {
namespace {

class FakeMailClientsUnderContract final : public MailClientsContract {
public:
    FakeMailClientsUnderContract() { m_clients.defaultClient = {.id = "birdmail"}; }
    MailClients& clients() override { return m_clients; }
    void runUntil(const std::function<bool()>& isDone) override {
        m_later.run();
        EXPECT_TRUE(isDone());
    }
    void waitForClient() override {}
    void endClient() override {}

private:
    Later m_later;
    FakeMailClients m_clients{m_later};
};

/// In the background.
void expectLaunch(PrivateDesktop& desktop) {
    EXPECT_EQ(desktop.nextStart(), "birdmail 0  none none");
}

/// It was launched only once: no second start comes before the end.
void expectEnd(PrivateDesktop& desktop) {
    EXPECT_EQ(desktop.endMailClient(), "ended");
}

class MailClientsOfDesktopUnderContract final : public MailClientsContract {
public:
    MailClients& clients() override { return m_clients; }
    void runUntil(const std::function<bool()>& isDone) override { m_running.runUntil(isDone); }
    void waitForClient() override { expectLaunch(m_desktop); }
    void endClient() override { expectEnd(m_desktop); }

private:
    PrivateDesktop& m_desktop = PrivateDesktop::instance();
    RunningLoop m_running;
    MailClientsOfDesktop m_clients{m_running.loop()};
};

template <typename Contract>
class EveryKindOfMailClients : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakeMailClientsUnderContract, MailClientsOfDesktopUnderContract>;
TYPED_TEST_SUITE(EveryKindOfMailClients, Kinds);

TYPED_TEST(EveryKindOfMailClients, FindsTheDefaultAndTellsItLater) {
    this->contract.findsTheDefaultAndTellsItLater();
}

TYPED_TEST(EveryKindOfMailClients, LaunchesAClientThatThenRuns) {
    this->contract.launchesAClientThatThenRuns();
}

TYPED_TEST(EveryKindOfMailClients, KnowsNothingOfClientsThatAreNotThere) {
    this->contract.knowsNothingOfClientsThatAreNotThere();
}

TYPED_TEST(EveryKindOfMailClients, TellsNobodyWhoHasLeft) {
    this->contract.tellsNobodyWhoHasLeft();
}

class TheMailClients : public testing::Test {
protected:
    bool isRunning(const std::string& clientId) {
        std::optional<bool> answer;
        const Handle asked =
            clients->isRunning(clientId, [&answer](bool isRunning) { answer = isRunning; });
        running.runUntil([&answer] { return answer.has_value(); });
        return answer.value_or(false);
    }

    PrivateDesktop& desktop = PrivateDesktop::instance();
    RunningLoop running;
    std::unique_ptr<MailClientsOfDesktop> clients =
        std::make_unique<MailClientsOfDesktop>(running.loop());
};

TEST_F(TheMailClients, RunWhoseBusNameIsOwned) {
    EXPECT_FALSE(isRunning("org.plenzo.Called-1"));
    const CalledProgram program(desktop.busAddress());
    EXPECT_TRUE(isRunning("org.plenzo.Called-1"));
}

TEST_F(TheMailClients, AreKnownByWhatTheirEntriesStart) {
    std::optional<MailClient> client;
    const Handle asked =
        clients->findDefault([&client](const std::optional<MailClient>& found) { client = found; });
    running.runUntil([&client] { return client.has_value(); });
    EXPECT_TRUE(client->program.starts_with('/') && client->program.ends_with("/birdmail"))
        << client->program;
}

TEST_F(TheMailClients, AreLaunchedByOneThatEndsAtOnce) {
    clients->launch("birdmail");
    const Handle unanswered = clients->isRunning("birdmail", [](bool) { FAIL(); });
    clients.reset();
    expectLaunch(desktop);
    expectEnd(desktop);
}

} // namespace
} // namespace plenzo
