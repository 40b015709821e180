#pragma once

#include "linux/main_loop.h"
#include "linux/wall_clock_timer.h"
#include "platform/clock.h"
#include "platform/timers.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace plenzo {

/// All timers of the program over one timer of the system on its wall clock: exact after a sleep of
/// the machine and after a clock step, and nothing wakes while nothing is due.
class AbsoluteTimers final : public Timers {
public:
    AbsoluteTimers(MainLoop& loop, const Clock& clock,
                   std::unique_ptr<WallClockTimer> timer = std::make_unique<TimerDescriptor>());

    [[nodiscard]] Handle schedule(Instant fireDate, std::function<void()> fired) override;

    /// What happens, on the main loop, when the clock was set, after the timers have fired that are
    /// due by the new time; with timers pending or none. Nothing unless set.
    void setClockChanged(std::function<void()> clockChanged) {
        m_clockChanged = std::move(clockChanged);
    }

private:
    class TimerRegistration;
    /// Equal dates keep the order in which they came.
    using Pending = std::multimap<Instant, std::function<void()>>;
    struct Schedule;

    void handle(WallClockTimer::ClockState clockState);
    void fireDue();
    void arm();

    MainLoop& m_loop;
    const Clock& m_clock;
    /// Shared with the handles, which may outlive this object.
    std::shared_ptr<Schedule> m_schedule;
    std::unique_ptr<WallClockTimer> m_timer;
    std::function<void()> m_clockChanged = [] {};
    Handle m_watch;
    Handle m_unreadClockChange;
};

} // namespace plenzo
