#pragma once

#include "dates/instant.h"
#include "platform/handle.h"

#include <functional>

namespace plenzo {

/// One-shot timers on the wall clock: a timer is due when the clock shows its date, however the
/// clock got there (time passing, a sleep of the machine, a clock set by the user).
class Timers {
public:
    Timers() = default;
    Timers(const Timers&) = delete;
    Timers& operator=(const Timers&) = delete;
    virtual ~Timers() = default;

    /// Calls `fired` once, from the main loop and never from within this call, as soon as the clock
    /// shows `fireDate` or later. Timers of one date fire in the order in which they were made.
    /// A date that the clock never reaches (the distant future, NaN) fires never.
    [[nodiscard]] virtual Handle schedule(Instant fireDate, std::function<void()> fired) = 0;
};

} // namespace plenzo
