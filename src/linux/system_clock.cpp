#include "linux/system_clock.h"

#include <ctime>

namespace plenzo {

Instant SystemClock::now() const {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return Instant::since1970(static_cast<double>(time.tv_sec) +
                              static_cast<double>(time.tv_nsec) * 1e-9);
}

} // namespace plenzo
