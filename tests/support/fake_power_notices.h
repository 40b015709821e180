#pragma once

#include "platform/observer_slot.h"
#include "platform/power_notices.h"

namespace plenzo {

/// A machine that sleeps and ends when a test says so.
class FakePowerNotices final : public PowerNotices {
public:
    [[nodiscard]] Handle observe(PowerObserver& observer) override {
        return m_slot.observe(observer);
    }

    [[nodiscard]] bool isObserved() const { return m_slot.observer() != nullptr; }

    void fallAsleep() { m_slot.tell(&PowerObserver::goingToSleep); }
    void wakeUp() { m_slot.tell(&PowerObserver::awakeFromSleep); }
    void shutDown() { m_slot.tell(&PowerObserver::shuttingDown); }
    void cancelShutdown() { m_slot.tell(&PowerObserver::shutdownCanceled); }

private:
    ObserverSlot<PowerObserver> m_slot;
};

} // namespace plenzo
