#include "linux/absolute_timers.h"

#include <sys/timerfd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace plenzo {

namespace {

constexpr double furthestTimerSeconds = 1e11; // the year 5138; the kernel's own limit is later

/// Rounded up, so that the clock never shows less than the date when the timer fires. A past date
/// becomes the first moment of the epoch, because zero would disarm.
itimerspec timerSpecification(Instant fireDate) {
    const double clamped = std::clamp(fireDate.secondsSince1970(), 1.0, furthestTimerSeconds);
    const double wholeSeconds = std::floor(clamped);
    const double microseconds = std::ceil((clamped - wholeSeconds) * 1e6);
    itimerspec specification{};
    specification.it_value.tv_sec = static_cast<time_t>(wholeSeconds);
    specification.it_value.tv_nsec = static_cast<long>(microseconds) * 1000;
    if (specification.it_value.tv_nsec >= 1'000'000'000) {
        specification.it_value.tv_sec += 1;
        specification.it_value.tv_nsec = 0;
    }
    return specification;
}

} // namespace

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

AbsoluteTimers::AbsoluteTimers(MainLoop& loop, const Clock& clock)
    : m_clock(clock), m_schedule(std::make_shared<Schedule>()),
      m_timer(::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {
    m_watch = loop.watch(m_timer.get(), MainLoop::Readiness::Readable, [this] {
        // The count is of no interest, and a clock that was set makes the read fail: either way
        // the clock decides what is due.
        std::uint64_t expirations = 0;
        [[maybe_unused]] const auto size = ::read(m_timer.get(), &expirations, sizeof expirations);
        fireDue();
    });
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

void AbsoluteTimers::arm() const {
    const auto& pending = m_schedule->pending;
    const itimerspec specification =
        pending.empty() ? itimerspec{} : timerSpecification(pending.begin()->first);
    ::timerfd_settime(m_timer.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &specification,
                      nullptr);
}

} // namespace plenzo
