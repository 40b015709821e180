#include "linux/absolute_timers.h"
#include "support/fake_clock.h"
#include "support/fake_wall_clock_timer.h"
#include "support/running_loop.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

class AClockChange : public testing::Test {
protected:
    AClockChange() {
        auto timer = std::make_unique<FakeWallClockTimer>();
        m_timer = timer.get();
        m_timers = std::make_unique<AbsoluteTimers>(m_running.loop(), m_clock, std::move(timer));
        m_timers->setClockChanged([this] { m_events.emplace_back("clock set"); });
    }

    Handle schedule(const std::string& name, double seconds) {
        return m_timers->schedule(noon + seconds, [this, name] { m_events.push_back(name); });
    }
    void runUntilEvents(std::size_t count) {
        m_running.runUntil([this, count] { return m_events.size() >= count; });
    }

    static constexpr Instant noon{800000000};
    RunningLoop m_running;
    FakeClock m_clock{noon};
    FakeWallClockTimer* m_timer;
    std::unique_ptr<AbsoluteTimers> m_timers;
    std::vector<std::string> m_events;
};

TEST_F(AClockChange, IsNoticedWithoutAnyTimer) {
    EXPECT_EQ(m_timer->armedDate, Instant::distantFuture());
    m_timer->becomeReadable(WallClockTimer::ClockState::WasSet);
    runUntilEvents(1);
    EXPECT_THAT(m_events, ElementsAre("clock set"));
    EXPECT_EQ(m_timer->armedDate, Instant::distantFuture()) << "for the next change";
}

TEST_F(AClockChange, ComesAfterTheTimersThatItMakesDue) {
    const Handle later = schedule("later", 600);
    const Handle soon = schedule("soon", 60);
    m_clock.set(noon + 100);
    m_timer->becomeReadable(WallClockTimer::ClockState::WasSet);
    runUntilEvents(2);
    EXPECT_THAT(m_events, ElementsAre("soon", "clock set"));
    EXPECT_EQ(m_timer->armedDate, noon + 600);
}

TEST_F(AClockChange, IsNoticedByTheTimerThatWouldHaveHiddenIt) {
    m_timer->stateToFindWhenArmed = WallClockTimer::ClockState::WasSet;
    const Handle later = schedule("later", 600);
    EXPECT_THAT(m_events, IsEmpty()) << "never from within the call";
    runUntilEvents(1);
    EXPECT_THAT(m_events, ElementsAre("clock set"));
}

TEST_F(AClockChange, IsNotWhatATimerIsThatComesDue) {
    const Handle soon = schedule("soon", 60);
    m_clock.set(noon + 60);
    m_timer->becomeReadable(WallClockTimer::ClockState::Runs);
    runUntilEvents(1);
    m_timer->becomeReadable(WallClockTimer::ClockState::WasSet);
    runUntilEvents(2);
    EXPECT_THAT(m_events, ElementsAre("soon", "clock set"));
}

TEST_F(AClockChange, MayCancelTimersAndComeAgain) {
    Handle soon = schedule("soon", 60);
    m_timers->setClockChanged([this, &soon] {
        soon.reset();
        m_events.emplace_back("clock set");
    });
    m_clock.set(noon - 3600);
    m_timer->becomeReadable(WallClockTimer::ClockState::WasSet);
    runUntilEvents(1);
    m_clock.set(noon + 3600);
    m_timer->becomeReadable(WallClockTimer::ClockState::WasSet);
    runUntilEvents(2);
    EXPECT_THAT(m_events, ElementsAre("clock set", "clock set"));
}

} // namespace
} // namespace plenzo
