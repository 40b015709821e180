#pragma once

#include "platform/handle.h"

namespace plenzo {

/// Told of what the machine is about to do. Whoever announces it waits until the call returns, so
/// what has to be done before must be done within it.
class PowerObserver {
public:
    PowerObserver() = default;
    PowerObserver(const PowerObserver&) = delete;
    PowerObserver& operator=(const PowerObserver&) = delete;
    virtual ~PowerObserver() = default;

    /// The machine falls asleep when this returns.
    virtual void goingToSleep() = 0;
    virtual void awakeFromSleep() = 0;
    /// The power goes off, or the user's session ends, when this returns. What is told twice (by
    /// the machine and by the session) comes twice.
    virtual void shuttingDown() = 0;
    /// What shuttingDown() announced does not come.
    virtual void shutdownCanceled() = 0;
};

/// The machine's sleep and end, and the end of the user's session.
class PowerNotices {
public:
    PowerNotices() = default;
    PowerNotices(const PowerNotices&) = delete;
    PowerNotices& operator=(const PowerNotices&) = delete;
    virtual ~PowerNotices() = default;

    /// Tells the observer, from the main loop, as long as the handle lives. Each sleep is followed
    /// by its awakening, even when whoever announced it is gone in between. One observer at a time.
    [[nodiscard]] virtual Handle observe(PowerObserver& observer) = 0;
};

} // namespace plenzo
