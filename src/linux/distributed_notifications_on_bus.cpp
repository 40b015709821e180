#include "linux/distributed_notifications_on_bus.h"

#include "linux/agent_address.h"

#include <sdbus-c++/sdbus-c++.h>

#include <string>

namespace plenzo {

DistributedNotificationsOnBus::DistributedNotificationsOnBus(BusThread& busThread)
    : m_busThread(busThread),
      m_object(sdbus::createObject(busThread.connection(), agentaddress::objectPath)) {
    m_object->registerSignal(agentaddress::notificationsInterface, "Posted", "s", {"name"});
    m_object->finishRegistration();
}

void DistributedNotificationsOnBus::post(std::string_view name) {
    m_busThread.perform([object = m_object, name = std::string(name)] {
        auto signal = object->createSignal(agentaddress::notificationsInterface, "Posted");
        signal << name;
        object->emitSignal(signal);
    });
}

} // namespace plenzo
