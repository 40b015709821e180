#include "linux/absolute_timers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace plenzo {

struct AbsoluteTimers::Schedule {
    Pending pending;
    /// The timers that are due in the round under way and have not been called yet.
    std::vector<Pending::iterator> due;
};

/// Takes its timer out of the schedule, unless that has fired.
class AbsoluteTimers::TimerRegistration final : public Registration {
public:
    TimerRegistration(std::shared_ptr<Schedule> schedule, Pending::iterator timer,
                      std::shared_ptr<bool> hasFired)
        : m_schedule(std::move(schedule)), m_timer(timer), m_hasFired(std::move(hasFired)) {}
    TimerRegistration(const TimerRegistration&) = delete;
    TimerRegistration& operator=(const TimerRegistration&) = delete;
    ~TimerRegistration() override {
        if (!*m_hasFired) {
            std::erase(m_schedule->due, m_timer);
            m_schedule->pending.erase(m_timer);
        }
    }

private:
    std::shared_ptr<Schedule> m_schedule;
    Pending::iterator m_timer;
    std::shared_ptr<bool> m_hasFired;
};

AbsoluteTimers::AbsoluteTimers(MainLoop& loop, const Clock& clock,
                               std::unique_ptr<WallClockTimer> timer)
    : m_loop(loop), m_clock(clock), m_schedule(std::make_shared<Schedule>()),
      m_timer(std::move(timer)) {
    m_watch = loop.watch(m_timer->descriptor(), MainLoop::Readiness::Readable,
                         [this] { handle(m_timer->acknowledge()); });
    arm();
}

void AbsoluteTimers::handle(WallClockTimer::ClockState clockState) {
    fireDue();
    if (clockState == WallClockTimer::ClockState::WasSet) {
        m_clockChanged();
    }
}

Handle AbsoluteTimers::schedule(Instant fireDate, std::function<void()> fired) {
    if (!fireDate.isFinite()) {
        return std::make_unique<Registration>();
    }
    auto hasFired = std::make_shared<bool>(false);
    const auto timer = m_schedule->pending.emplace(fireDate, [hasFired, fired = std::move(fired)] {
        *hasFired = true;
        fired();
    });
    if (timer == m_schedule->pending.begin()) {
        arm();
    }
    return std::make_unique<TimerRegistration>(m_schedule, timer, std::move(hasFired));
}

void AbsoluteTimers::fireDue() {
    // What the callbacks schedule waits for the next round, however early it is due.
    auto& [pending, due] = *m_schedule;
    const auto end = pending.upper_bound(m_clock.now());
    for (auto timer = pending.begin(); timer != end; ++timer) {
        due.push_back(timer);
    }
    while (!due.empty()) {
        const auto timer = due.front();
        due.erase(due.begin());
        const auto fired = std::move(timer->second);
        pending.erase(timer);
        fired();
    }
    arm();
}

void AbsoluteTimers::arm() {
    const auto& pending = m_schedule->pending;
    const Instant date = pending.empty() ? Instant::distantFuture() : pending.begin()->first;
    if (m_timer->arm(date) == WallClockTimer::ClockState::WasSet) {
        // The descriptor does not say so any more.
        m_unreadClockChange =
            m_loop.after(0, [this] { handle(WallClockTimer::ClockState::WasSet); });
    }
}

} // namespace plenzo
