#include "linux/login_manager.h"

#include "linux/login_manager_address.h"

namespace plenzo {

LoginManager::LoginManager(BusOnMainLoop& systemBus, PowerObserver& observer)
    : m_service(
          systemBus, loginmanager::name,
          [this] {
              m_sleep.loginManagerCame();
              m_shutdown.loginManagerCame();
          },
          [this] { left(); }),
      m_sleep(
          m_service,
          {.what = "sleep", .signal = "PrepareForSleep", .property = "PreparingForSleep"},
          [&observer] { observer.goingToSleep(); }, [&observer] { observer.awakeFromSleep(); }),
      m_shutdown(
          m_service,
          {.what = "shutdown", .signal = "PrepareForShutdown", .property = "PreparingForShutdown"},
          [&observer] { observer.shuttingDown(); }, [&observer] { observer.shutdownCanceled(); }) {}

void LoginManager::left() {
    m_sleep.loginManagerLeft();
    m_shutdown.loginManagerLeft();
    // Nobody would tell of the awakening any more, and we run. The shut-down, however, may well be
    // what made the login manager leave; only its successor knows better.
    m_sleep.note(false);
}

} // namespace plenzo
