#pragma once

#include "linux/login_manager.h"
#include "linux/session_manager.h"
#include "platform/observer_slot.h"
#include "platform/power_notices.h"

#include <functional>
#include <optional>

namespace plenzo {

/// What the machine's login manager and the desktop's session manager announce, as one.
class PowerNoticesOfSystem final : public PowerNotices, private PowerObserver {
public:
    /// `systemBus` may be absent, and the machine's sleep and end with it. `stopRequested` is
    /// called when the session manager wants the agent to end.
    PowerNoticesOfSystem(BusOnMainLoop* systemBus, BusOnMainLoop& sessionBus,
                         std::function<void()> stopRequested);

    [[nodiscard]] Handle observe(PowerObserver& observer) override {
        return m_slot.observe(observer);
    }

    /// To be told when the system's bus has gone.
    void systemBusLost();
    /// To be told by whoever hears of the session's end in another way; it cannot be taken back.
    void sessionEnds() { m_slot.tell(&PowerObserver::shuttingDown); }

private:
    void goingToSleep() override { m_slot.tell(&PowerObserver::goingToSleep); }
    void awakeFromSleep() override { m_slot.tell(&PowerObserver::awakeFromSleep); }
    void shuttingDown() override { m_slot.tell(&PowerObserver::shuttingDown); }
    void shutdownCanceled() override { m_slot.tell(&PowerObserver::shutdownCanceled); }

    ObserverSlot<PowerObserver> m_slot;
    std::optional<LoginManager> m_loginManager;
    SessionManager m_sessionManager;
};

} // namespace plenzo
