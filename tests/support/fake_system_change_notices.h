#pragma once

#include "platform/observer_slot.h"
#include "platform/system_change_notices.h"

namespace plenzo {

/// A system whose settings change when a test says so. The test sets the fake clock and the fake
/// regional settings before.
class FakeSystemChangeNotices final : public SystemChangeNotices {
public:
    [[nodiscard]] Handle observe(SystemChangeObserver& observer) override {
        return m_slot.observe(observer);
    }

    [[nodiscard]] bool isObserved() const { return m_slot.observer() != nullptr; }

    void changeTimeZoneFrom(const TimeZone& previous) {
        m_slot.tell(&SystemChangeObserver::systemTimeZoneChanged, previous);
    }
    void changeTime() { m_slot.tell(&SystemChangeObserver::systemTimeChanged); }
    void changeTimeFormat() { m_slot.tell(&SystemChangeObserver::timeFormatChanged); }

private:
    ObserverSlot<SystemChangeObserver> m_slot;
};

} // namespace plenzo
