#include "linux/power_notices_of_system.h"

#include <utility>

namespace plenzo {

PowerNoticesOfSystem::PowerNoticesOfSystem(BusOnMainLoop* systemBus, BusOnMainLoop& sessionBus,
                                           std::function<void()> stopRequested)
    : m_sessionManager(sessionBus, *this, std::move(stopRequested)) {
    if (systemBus != nullptr) {
        PowerObserver& here = *this;
        m_loginManager.emplace(*systemBus, here);
    }
}

void PowerNoticesOfSystem::systemBusLost() {
    if (m_loginManager) {
        m_loginManager->busLost();
    }
}

} // namespace plenzo
