#pragma once

#include "linux/main_loop.h"

#include <sdbus-c++/IConnection.h>

#include <functional>
#include <memory>

namespace plenzo {

/// A bus connection that the main loop serves: calls out are asynchronous, and their answers and
/// the signals arrive as callbacks of the loop.
class BusOnMainLoop {
public:
    /// Takes the connection over. `disconnected` is called once, when the bus has gone.
    BusOnMainLoop(MainLoop& loop, std::unique_ptr<sdbus::IConnection> connection,
                  std::function<void()> disconnected);

    [[nodiscard]] sdbus::IConnection& connection() { return *m_connection; }

    /// To be called after anything was sent or registered on the connection from outside of its
    /// callbacks: the loop then waits for what the connection waits for.
    void sent();

private:
    void process();
    void processPendingRequests();
    void updateWriteWatch(bool wantsToWrite);
    void updateTimeLimit();

    MainLoop& m_loop;
    std::unique_ptr<sdbus::IConnection> m_connection;
    std::function<void()> m_disconnected;
    Handle m_readWatch;
    Handle m_writeWatch;
    Handle m_timeLimit;
};

} // namespace plenzo
