#pragma once

#include "linux/bus_service.h"
#include "platform/power_notices.h"

#include <functional>
#include <string>

namespace plenzo {

/// The manager of the desktop session (org.gnome.SessionManager, which several desktops offer), of
/// which the agent is a client: it announces the session's end and waits for us. It may come late,
/// and come and go.
class SessionManager {
public:
    /// Tells `observer`, which outlives this object, of the session's end. `stopRequested` is
    /// called when the agent is to end now.
    SessionManager(BusOnMainLoop& sessionBus, PowerObserver& observer,
                   std::function<void()> stopRequested);

private:
    void registerClient();
    void noteRegistration(const std::string& clientPath);
    void onClientSignal(const char* signal, std::function<void()> heard);
    void endSession();
    void cancelEndSession();
    void respond();

    PowerObserver& m_observer;
    /// By which a session manager recognises a client that it started itself.
    std::string m_startupIdentifier;
    BusService m_service;
    /// Our object at the session manager. Empty while we are not registered.
    std::string m_clientPath;
    bool m_isEnding = false;
};

} // namespace plenzo
