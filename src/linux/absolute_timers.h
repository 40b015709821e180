#pragma once

#include "linux/main_loop.h"
#include "linux/wire/file_descriptor.h"
#include "platform/clock.h"
#include "platform/timers.h"

#include <map>
#include <memory>

namespace plenzo {

/// All timers of the program over one timerfd on CLOCK_REALTIME, absolute, and cancelled when the
/// clock is set: exact after a sleep of the machine and after a clock step, and nothing wakes while
/// nothing is due.
class AbsoluteTimers final : public Timers {
public:
    AbsoluteTimers(MainLoop& loop, const Clock& clock);

    [[nodiscard]] Handle schedule(Instant fireDate, std::function<void()> fired) override;

private:
    class TimerRegistration;
    /// Equal dates keep the order in which they came.
    using Pending = std::multimap<Instant, std::function<void()>>;
    struct Schedule;

    void fireDue();
    void arm() const;

    const Clock& m_clock;
    /// Shared with the handles, which may outlive this object.
    std::shared_ptr<Schedule> m_schedule;
    FileDescriptor m_timer;
    Handle m_watch;
};

} // namespace plenzo
