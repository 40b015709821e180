#pragma once

#include "linux/wire/file_descriptor.h"

#include <functional>
#include <utility>
#include <vector>

namespace sdbus {
class IConnection;
}

namespace plenzo {

enum class LoopEnd { None, Terminated, BusGone, Asked };

/// Serves the bus connection until SIGTERM or SIGINT arrives, the bus goes away, or it is asked to
/// end. The signals are blocked from construction on, so none is lost before the loop runs.
class HostLoop {
public:
    HostLoop();

    /// From then on it is for the next loop to end by them.
    static void blockTerminationSignals();

    /// Calls `ready` whenever the descriptor, which outlives the loop, can be read.
    void watch(int descriptor, std::function<void()> ready) {
        m_watches.emplace_back(descriptor, std::move(ready));
    }

    /// To be called by what it serves.
    void end() { m_isToEnd = true; }

    LoopEnd run(sdbus::IConnection& connection);

private:
    LoopEnd wait(sdbus::IConnection& connection);

    FileDescriptor m_signals;
    bool m_isToEnd = false;
    std::vector<std::pair<int, std::function<void()>>> m_watches;
};

} // namespace plenzo
