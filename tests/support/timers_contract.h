#pragma once

#include "platform/timers.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// What every implementation of Timers keeps to. A subclass gives the timers, the present moment,
/// and a way to let everything happen that is due, which returns when `isDone` holds.
class TimersContract {
public:
    TimersContract() = default;
    TimersContract(const TimersContract&) = delete;
    TimersContract& operator=(const TimersContract&) = delete;
    virtual ~TimersContract() = default;

    virtual Timers& timers() = 0;
    virtual Instant now() = 0;
    virtual void runUntil(const std::function<bool()>& isDone) = 0;

    void firesInOrderAndNeverFromWithinTheCall() {
        const Handle third = schedule("third", -10);
        const Handle first = schedule("first", -30);
        const Handle second = schedule("second", -20);
        const Handle fourth = schedule("fourth", -10);
        EXPECT_THAT(m_fired, testing::IsEmpty());
        runUntil([this] { return m_fired.size() == 4; });
        EXPECT_THAT(m_fired, testing::ElementsAre("first", "second", "third", "fourth"));
    }

    void leavesOutWhatWasCancelledOrIsNeverDue() {
        Handle cancelled = schedule("cancelled", -20);
        const Handle farAway = schedule("far away", 1e9);
        const Handle never = scheduleAt("never", Instant::distantFuture());
        const Handle undefined = scheduleAt("undefined", Instant(0.0 / m_zero));
        const Handle due = schedule("due", -10);
        cancelled.reset();
        runUntil([this] { return !m_fired.empty(); });
        EXPECT_THAT(m_fired, testing::ElementsAre("due"));
    }

    void letsACallbackCancelItsOwnAndOtherTimers() {
        Handle own;
        Handle other;
        own = timers().schedule(now() - 20, [this, &own, &other] {
            own.reset();
            other.reset();
            m_fired.emplace_back("own");
        });
        other = schedule("other", -10);
        const Handle last = schedule("last", -5);
        runUntil([this] { return m_fired.size() >= 2; });
        EXPECT_THAT(m_fired, testing::ElementsAre("own", "last"));
    }

    void firesWhatACallbackSchedules() {
        Handle again;
        const Handle first = timers().schedule(now() - 10, [this, &again] {
            again = schedule("again", -20);
            m_fired.emplace_back("first");
        });
        runUntil([this] { return m_fired.size() == 2; });
        EXPECT_THAT(m_fired, testing::ElementsAre("first", "again"));
    }

private:
    Handle schedule(const std::string& name, double secondsFromNow) {
        return scheduleAt(name, now() + secondsFromNow);
    }
    Handle scheduleAt(const std::string& name, Instant date) {
        return timers().schedule(date, [this, name] { m_fired.push_back(name); });
    }

    std::vector<std::string> m_fired;
    double m_zero = 0;
};

} // namespace plenzo
