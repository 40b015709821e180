#include "linux/absolute_timers.h"
#include "linux/system_clock.h"
#include "support/fake_timers.h"
#include "support/running_loop.h"
#include "support/timers_contract.h"

#include <gtest/gtest.h>

namespace plenzo {
namespace {

class FakeTimersUnderContract final : public TimersContract {
public:
    Timers& timers() override { return m_timers; }
    Instant now() override { return m_clock.now(); }
    void runUntil(const std::function<bool()>& isDone) override {
        m_timers.fireDue();
        EXPECT_TRUE(isDone());
    }

private:
    FakeClock m_clock{Instant(800000000)};
    FakeTimers m_timers{m_clock};
};

/// Over the machine's clock, but with nothing scheduled that would have to be waited for.
class AbsoluteTimersUnderContract final : public TimersContract {
public:
    Timers& timers() override { return m_timers; }
    Instant now() override { return m_clock.now(); }
    void runUntil(const std::function<bool()>& isDone) override { m_running.runUntil(isDone); }

private:
    RunningLoop m_running;
    SystemClock m_clock;
    AbsoluteTimers m_timers{m_running.loop(), m_clock};
};

template <typename Contract>
class EveryKindOfTimers : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakeTimersUnderContract, AbsoluteTimersUnderContract>;
TYPED_TEST_SUITE(EveryKindOfTimers, Kinds);

TYPED_TEST(EveryKindOfTimers, FiresInOrderAndNeverFromWithinTheCall) {
    this->contract.firesInOrderAndNeverFromWithinTheCall();
}

TYPED_TEST(EveryKindOfTimers, LeavesOutWhatWasCancelledOrIsNeverDue) {
    this->contract.leavesOutWhatWasCancelledOrIsNeverDue();
}

TYPED_TEST(EveryKindOfTimers, LetsACallbackCancelItsOwnAndOtherTimers) {
    this->contract.letsACallbackCancelItsOwnAndOtherTimers();
}

TYPED_TEST(EveryKindOfTimers, FiresWhatACallbackSchedules) {
    this->contract.firesWhatACallbackSchedules();
}

} // namespace
} // namespace plenzo
