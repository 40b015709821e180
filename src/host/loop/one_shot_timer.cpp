#include "host/loop/one_shot_timer.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>

namespace plenzo {

OneShotTimer::OneShotTimer(int clock)
    : m_timer(timerfd_create(clock, TFD_NONBLOCK | TFD_CLOEXEC)) {}

void OneShotTimer::expireIn(int milliseconds) {
    constexpr int millisecondsPerSecond = 1000;
    constexpr long nanosecondsPerMillisecond = 1'000'000;
    itimerspec moment{};
    moment.it_value.tv_sec = milliseconds / millisecondsPerSecond;
    moment.it_value.tv_nsec = milliseconds % millisecondsPerSecond * nanosecondsPerMillisecond;
    timerfd_settime(m_timer.get(), 0, &moment, nullptr);
}

void OneShotTimer::expireAt(SystemSeconds date) {
    itimerspec moment{};
    moment.it_value.tv_sec = date.time_since_epoch().count();
    timerfd_settime(m_timer.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &moment, nullptr);
}

void OneShotTimer::acknowledge() {
    std::uint64_t expiries = 0;
    // An error says that the clock was set, which counts as an expiry.
    [[maybe_unused]] const ssize_t length = read(m_timer.get(), &expiries, sizeof expiries);
}

} // namespace plenzo
