#include "linux/power_notices_of_system.h"
#include "support/fake_power_notices.h"
#include "support/played_login_manager.h"
#include "support/power_notices_contract.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace plenzo {
namespace {

class FakePowerNoticesUnderContract final : public PowerNoticesContract {
public:
    PowerNotices& notices() override { return m_notices; }
    void fallAsleep() override { m_notices.fallAsleep(); }
    void wakeUp() override { m_notices.wakeUp(); }
    void shutDown() override { m_notices.shutDown(); }
    void cancelShutdown() override { m_notices.cancelShutdown(); }

private:
    FakePowerNotices m_notices;
};

/// The system's notices with a login manager that the test plays, when it wants one to be there.
struct Machine {
    ServedBus bus;
    std::unique_ptr<BusOnMainLoop> connection = bus.connect();
    PowerNoticesOfSystem notices{connection.get(), *connection, [] { FAIL(); }};
    std::optional<PlayedLoginManager> loginManager;

    /// Until the notices know of it and have their inhibitors.
    template <typename... Arguments>
    void startLoginManager(Arguments... arguments) {
        loginManager.emplace(bus, arguments...);
        settle();
    }
    void settle() {
        // There, back, and there again: one call follows from another's answer.
        for (int trip = 0; trip < 3; ++trip) {
            bus.roundTrip(*connection);
            if (loginManager) {
                loginManager->roundTrip();
            }
        }
    }
    void prepareForSleep(bool start) {
        loginManager->prepareForSleep(start);
        settle();
    }
    void prepareForShutdown(bool start) {
        loginManager->prepareForShutdown(start);
        settle();
    }
};

class PowerNoticesOfSystemUnderContract final : public PowerNoticesContract {
public:
    PowerNoticesOfSystemUnderContract() { m_machine.startLoginManager(); }
    PowerNotices& notices() override { return m_machine.notices; }
    void fallAsleep() override { m_machine.prepareForSleep(true); }
    void wakeUp() override { m_machine.prepareForSleep(false); }
    void shutDown() override { m_machine.prepareForShutdown(true); }
    void cancelShutdown() override { m_machine.prepareForShutdown(false); }

private:
    Machine m_machine;
};

template <typename Contract>
class EveryKindOfPowerNotices : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakePowerNoticesUnderContract, PowerNoticesOfSystemUnderContract>;
TYPED_TEST_SUITE(EveryKindOfPowerNotices, Kinds);

TYPED_TEST(EveryKindOfPowerNotices, TellsInOrderWhileObserved) {
    this->contract.tellsInOrderWhileObserved();
}

TYPED_TEST(EveryKindOfPowerNotices, LetsTheObserverEndItsObservation) {
    this->contract.letsTheObserverEndItsObservation();
}

TYPED_TEST(EveryKindOfPowerNotices, TellsTheLaterObserverOnly) {
    this->contract.tellsTheLaterObserverOnly();
}

class ALoginManager : public testing::Test, protected Machine {
protected:
    PowerJournal journal;
    Handle observation = notices.observe(journal);
};

TEST_F(ALoginManager, WaitsUntilTheObserverHasReturned) {
    startLoginManager();
    EXPECT_THAT(loginManager->requests, UnorderedElementsAre("sleep, Plenzo Alarm, delay",
                                                             "shutdown, Plenzo Alarm, delay"));
    EXPECT_TRUE(loginManager->isHeld("sleep"));
    EXPECT_TRUE(loginManager->isHeld("shutdown"));
    journal.whenTold = [this] { EXPECT_TRUE(loginManager->isHeld("sleep")); };
    prepareForSleep(true);
    EXPECT_FALSE(loginManager->isHeld("sleep"));
    EXPECT_TRUE(loginManager->isHeld("shutdown"));
    journal.whenTold = [] {};
    prepareForSleep(false);
    EXPECT_EQ(loginManager->heldCount("sleep"), 1);
    EXPECT_EQ(loginManager->heldCount("shutdown"), 1);
    EXPECT_THAT(journal.heard, ElementsAre("sleep", "awake"));
}

TEST_F(ALoginManager, WaitsForTheShutdownApartFromTheSleep) {
    startLoginManager();
    journal.whenTold = [this] { EXPECT_TRUE(loginManager->isHeld("shutdown")); };
    prepareForShutdown(true);
    EXPECT_FALSE(loginManager->isHeld("shutdown"));
    EXPECT_TRUE(loginManager->isHeld("sleep"));
    journal.whenTold = [] {};
    prepareForShutdown(false);
    EXPECT_EQ(loginManager->heldCount("shutdown"), 1);
    EXPECT_THAT(journal.heard, ElementsAre("end", "no end"));
}

TEST_F(ALoginManager, IsPassedOnOnceWhateverItRepeats) {
    startLoginManager();
    for (const bool start : {false, true, true, false, false}) {
        loginManager->prepareForSleep(start);
        loginManager->prepareForShutdown(start);
    }
    settle();
    EXPECT_THAT(journal.heard, ElementsAre("sleep", "end", "awake", "no end"));
    EXPECT_EQ(loginManager->heldCount("sleep"), 1);
}

TEST_F(ALoginManager, MayVanishDuringSleepWhichIsThenOver) {
    startLoginManager();
    prepareForSleep(true);
    loginManager.reset();
    bus.runUntil([this] { return journal.heard.size() == 2; });
    startLoginManager();
    EXPECT_TRUE(loginManager->isHeld("sleep"));
    prepareForSleep(true);
    EXPECT_THAT(journal.heard, ElementsAre("sleep", "awake", "sleep"));
}

TEST_F(ALoginManager, MayVanishAndKeepsNothingWaiting) {
    startLoginManager();
    loginManager.reset();
    settle();
    EXPECT_THAT(journal.heard, IsEmpty());
    startLoginManager();
    EXPECT_EQ(loginManager->heldCount("sleep"), 1);
    EXPECT_EQ(loginManager->heldCount("shutdown"), 1);
    EXPECT_THAT(journal.heard, IsEmpty());
}

TEST_F(ALoginManager, KnowsWhetherTheShutdownThatItsPredecessorAnnouncedStillComes) {
    startLoginManager();
    prepareForShutdown(true);
    loginManager.reset();
    settle();
    startLoginManager(PlayedLoginManager::Properties{.preparingForShutdown = true});
    EXPECT_THAT(journal.heard, ElementsAre("end"));
    loginManager.reset();
    settle();
    startLoginManager();
    EXPECT_THAT(journal.heard, ElementsAre("end", "no end"));
    EXPECT_EQ(loginManager->heldCount("shutdown"), 1);
}

TEST_F(ALoginManager, IsMetWhileItPreparesForSleep) {
    startLoginManager(PlayedLoginManager::Properties{.preparingForSleep = true});
    EXPECT_THAT(journal.heard, ElementsAre("sleep"));
    EXPECT_FALSE(loginManager->isHeld("sleep"));
    loginManager->prepareForSleep(true);
    prepareForSleep(false);
    EXPECT_THAT(journal.heard, ElementsAre("sleep", "awake"));
    EXPECT_EQ(loginManager->heldCount("sleep"), 1);
}

TEST_F(ALoginManager, MayAnswerAfterTheSleepHasBegun) {
    startLoginManager(PlayedLoginManager::Properties(), PlayedLoginManager::Answers::WhenReleased);
    prepareForSleep(true);
    loginManager->releaseAnswers();
    settle();
    EXPECT_FALSE(loginManager->isHeld("sleep"));
    EXPECT_TRUE(loginManager->isHeld("shutdown"));
    prepareForSleep(false);
    EXPECT_EQ(loginManager->heldCount("sleep"), 1);
}

TEST_F(ALoginManager, MayRefuseToWait) {
    startLoginManager(PlayedLoginManager::Properties(), PlayedLoginManager::Answers::WithErrors);
    prepareForSleep(true);
    prepareForSleep(false);
    EXPECT_THAT(journal.heard, ElementsAre("sleep", "awake"));
    EXPECT_EQ(loginManager->requests.size(), 3U);
}

TEST_F(ALoginManager, IsNotHeardWhenItTalksNonsense) {
    startLoginManager();
    loginManager->emitNonsense();
    settle();
    EXPECT_THAT(journal.heard, IsEmpty());
    prepareForSleep(true);
    EXPECT_THAT(journal.heard, ElementsAre("sleep"));
}

TEST_F(ALoginManager, IsNotWhoeverSendsItsSignals) {
    startLoginManager();
    PlayedService stranger(bus, "org.test.Stranger", "/org/freedesktop/login1");
    stranger.send("org.freedesktop.login1.Manager", "PrepareForSleep",
                  connection->connection().getUniqueName(), true);
    settle();
    EXPECT_THAT(journal.heard, IsEmpty());
    loginManager->prepareForSleep(true, connection->connection().getUniqueName());
    settle();
    EXPECT_THAT(journal.heard, ElementsAre("sleep"));
}

TEST_F(ALoginManager, LeavesWithItsBus) {
    PowerNoticesOfSystem* told = nullptr;
    const auto systemBus = bus.connect([&told] { told->systemBusLost(); });
    PowerNoticesOfSystem ours(systemBus.get(), *connection, [] { FAIL(); });
    told = &ours;
    observation = ours.observe(journal);
    startLoginManager();
    bus.roundTrip(*systemBus);
    prepareForSleep(true);
    bus.roundTrip(*systemBus);
    ASSERT_THAT(journal.heard, ElementsAre("sleep"));
    bus.daemon().stop();
    bus.runUntil([this] { return journal.heard.size() == 2; });
    EXPECT_THAT(journal.heard, ElementsAre("sleep", "awake"));
}

TEST(WithoutASystemBus, ThereIsNothingToTell) {
    ServedBus bus;
    const auto connection = bus.connect();
    PowerNoticesOfSystem notices(nullptr, *connection, [] { FAIL(); });
    PowerJournal journal;
    const Handle observation = notices.observe(journal);
    notices.systemBusLost();
    bus.roundTrip(*connection);
    EXPECT_THAT(journal.heard, IsEmpty());
}

} // namespace
} // namespace plenzo
