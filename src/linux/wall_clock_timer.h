#pragma once

#include "dates/instant.h"
#include "linux/wire/file_descriptor.h"

namespace plenzo {

/// The one timer of the system that stands behind all of ours. It also notices when the wall clock
/// is set.
class WallClockTimer {
public:
    /// What has become of the clock since it was last looked at.
    enum class ClockState { Runs, WasSet };

    WallClockTimer() = default;
    WallClockTimer(const WallClockTimer&) = delete;
    WallClockTimer& operator=(const WallClockTimer&) = delete;
    virtual ~WallClockTimer() = default;

    /// Readable when the date has come or the clock was set, until acknowledged.
    [[nodiscard]] virtual int descriptor() const = 0;
    /// Instead of the date before. A date that never comes leaves only the clock to be noticed.
    [[nodiscard]] virtual ClockState arm(Instant date) = 0;
    [[nodiscard]] virtual ClockState acknowledge() = 0;
};

/// A timerfd on CLOCK_REALTIME, absolute, and cancelled when the clock is set.
class TimerDescriptor final : public WallClockTimer {
public:
    TimerDescriptor();

    [[nodiscard]] int descriptor() const override { return m_timer.get(); }
    [[nodiscard]] ClockState arm(Instant date) override;
    [[nodiscard]] ClockState acknowledge() override;

private:
    FileDescriptor m_timer;
};

} // namespace plenzo
