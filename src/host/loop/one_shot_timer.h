#pragma once

#include "host/ical/calendar_time.h"
#include "linux/wire/file_descriptor.h"

namespace plenzo {

/// A timer whose descriptor becomes readable once.
class OneShotTimer {
public:
    /// Of a clock of the system: CLOCK_MONOTONIC, or CLOCK_REALTIME for dates.
    explicit OneShotTimer(int clock);

    [[nodiscard]] int descriptor() const { return m_timer.get(); }
    /// In place of when it was to be before; 0 for never.
    void expireIn(int milliseconds);
    /// At that date of the clock, also when somebody sets it; a clock that is set makes it expire
    /// too, since the date may be another one then.
    void expireAt(SystemSeconds date);
    /// Takes note of the expiry, so that the descriptor is readable no more.
    void acknowledge();

private:
    FileDescriptor m_timer;
};

} // namespace plenzo
