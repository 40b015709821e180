#pragma once

#include <functional>

namespace sdbus {
class IConnection;
}

namespace plenzo {

enum class LoopEnd { Terminated, BusGone };

/// Serves the bus connection until SIGTERM or SIGINT arrives or the bus goes away. The signals are
/// blocked from construction on, so none is lost before the loop runs.
class HostLoop {
public:
    HostLoop();
    ~HostLoop();
    HostLoop(const HostLoop&) = delete;
    HostLoop& operator=(const HostLoop&) = delete;

    LoopEnd run(sdbus::IConnection& connection);

private:
    int m_signalDescriptor;
};

} // namespace plenzo
