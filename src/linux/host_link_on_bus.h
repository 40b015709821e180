#pragma once

#include "linux/bus_thread.h"
#include "linux/main_loop.h"
#include "platform/host_link.h"

#include <sdbus-c++/IObject.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace plenzo {

/// The host's operations as methods of the agent's bus object. Messages are read on the bus thread,
/// and what they hold is handed to the main loop in the order of their arrival.
class HostLinkOnBus final : public HostLink {
public:
    /// To be made before the thread starts.
    HostLinkOnBus(MainLoop& loop, BusThread& busThread);

    /// Starts the bus thread.
    void open(PlenzoAlarmProtocol& exported) override;
    void close() override;

    /// What happens on the main loop when the bus has gone. Nothing unless set.
    void setDisconnected(std::function<void()> disconnected) {
        m_disconnected = std::move(disconnected);
    }

private:
    using Reader = std::function<void(sdbus::MethodCall&)>;

    void registerOperations();
    void registerOperation(const char* name, const char* signature,
                           const std::vector<std::string>& parameters, Reader reader);
    void readAlarmsUpdated(sdbus::MethodCall& call);
    void readAlarmsUpdatedFromFile(sdbus::MethodCall& call);
    /// Runs the operation on the main loop, if the link is still open then.
    void forward(std::function<void(PlenzoAlarmProtocol&)> operation);

    MainLoop& m_loop;
    BusThread& m_busThread;
    std::unique_ptr<sdbus::IObject> m_object;
    /// Touched on the main loop only.
    PlenzoAlarmProtocol* m_exported = nullptr;
    std::function<void()> m_disconnected = [] {};
};

} // namespace plenzo
