#pragma once

#include "linux/announced_action.h"
#include "linux/bus_service.h"
#include "platform/power_notices.h"

namespace plenzo {

/// The login manager (org.freedesktop.login1), which announces the machine's sleep and end and
/// waits for us. It may come late, and come and go.
class LoginManager {
public:
    /// Tells `observer`, which outlives this object.
    LoginManager(BusOnMainLoop& systemBus, PowerObserver& observer);

    /// To be told when the system's bus has gone.
    void busLost() { m_service.busLost(); }

private:
    void left();

    BusService m_service;
    AnnouncedAction m_sleep;
    AnnouncedAction m_shutdown;
};

} // namespace plenzo
