#include "linux/session_manager.h"

#include "linux/environment.h"

#include <sdbus-c++/Types.h>

#include <cstdlib>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* serviceName = "org.gnome.SessionManager";
constexpr const char* managerPath = "/org/gnome/SessionManager";
constexpr const char* managerInterface = "org.gnome.SessionManager";
constexpr const char* clientInterface = "org.gnome.SessionManager.ClientPrivate";
constexpr const char* applicationIdentifier = "org.plenzo.PlenzoAlarm";

/// The programs that we start must not take it for theirs.
std::string takeStartupIdentifier() {
    constexpr const char* variable = "DESKTOP_AUTOSTART_ID";
    std::string identifier = environment(variable);
    ::unsetenv(variable);
    return identifier;
}

} // namespace

SessionManager::SessionManager(BusOnMainLoop& sessionBus, PowerObserver& observer,
                               std::function<void()> stopRequested)
    : m_observer(observer), m_startupIdentifier(takeStartupIdentifier()),
      m_service(
          sessionBus, serviceName, [this] { registerClient(); }, [this] { m_clientPath.clear(); }) {
    onClientSignal("QueryEndSession", [this] { respond(); });
    onClientSignal("EndSession", [this] { endSession(); });
    onClientSignal("CancelEndSession", [this] { cancelEndSession(); });
    onClientSignal("Stop", std::move(stopRequested));
}

void SessionManager::onClientSignal(const char* signal, std::function<void()> heard) {
    m_service.onSignal(clientInterface, signal,
                       [this, heard = std::move(heard)](sdbus::Message& message) {
                           if (!m_clientPath.empty() && message.getPath() == m_clientPath) {
                               heard();
                           }
                       });
}

void SessionManager::registerClient() {
    m_service.call(
        {managerPath, managerInterface, "RegisterClient"},
        [this](sdbus::MethodReply* reply) {
            if (reply != nullptr) {
                sdbus::ObjectPath path;
                *reply >> path;
                noteRegistration(path);
            }
        },
        applicationIdentifier, std::exchange(m_startupIdentifier, {}));
}

void SessionManager::noteRegistration(const std::string& clientPath) {
    m_clientPath = clientPath;
    // A new session manager knows nothing of an end that an earlier one announced.
    cancelEndSession();
}

void SessionManager::endSession() {
    if (!std::exchange(m_isEnding, true)) {
        m_observer.shuttingDown();
    }
    respond();
}

void SessionManager::cancelEndSession() {
    if (std::exchange(m_isEnding, false)) {
        m_observer.shutdownCanceled();
    }
}

void SessionManager::respond() {
    m_service.call(
        {m_clientPath, clientInterface, "EndSessionResponse"}, [](sdbus::MethodReply* /*reply*/) {},
        true, "");
}

} // namespace plenzo
