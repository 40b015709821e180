#include "linux/wall_clock_timer.h"

#include <sys/timerfd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>

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

TimerDescriptor::TimerDescriptor()
    : m_timer(::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {}

WallClockTimer::ClockState TimerDescriptor::arm(Instant date) {
    // Setting the timer takes a cancellation back that nobody has read yet, and says so by the same
    // error; the timer is set all the same.
    const itimerspec specification = timerSpecification(date);
    const int result = ::timerfd_settime(m_timer.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET,
                                         &specification, nullptr);
    return result < 0 && errno == ECANCELED ? ClockState::WasSet : ClockState::Runs;
}

WallClockTimer::ClockState TimerDescriptor::acknowledge() {
    std::uint64_t expirations = 0; // of no interest: the clock decides what is due
    const auto size = ::read(m_timer.get(), &expirations, sizeof expirations);
    return size < 0 && errno == ECANCELED ? ClockState::WasSet : ClockState::Runs;
}

} // namespace plenzo
