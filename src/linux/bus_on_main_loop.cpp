#include "linux/bus_on_main_loop.h"

#include <poll.h>
#include <sdbus-c++/Error.h>

#include <utility>

namespace plenzo {

BusOnMainLoop::BusOnMainLoop(MainLoop& loop, std::unique_ptr<sdbus::IConnection> connection,
                             std::function<void()> disconnected)
    : m_loop(loop), m_connection(std::move(connection)), m_disconnected(std::move(disconnected)) {
    const int descriptor = m_connection->getEventLoopPollData().fd;
    m_readWatch = m_loop.watch(descriptor, MainLoop::Readiness::Readable, [this] { process(); });
}

void BusOnMainLoop::sent() {
    // A call that waited for its own answer may have read others' messages too, which no readiness
    // of the descriptor will announce again.
    m_timeLimit = m_loop.after(0, [this] { process(); });
}

void BusOnMainLoop::process() {
    try {
        processPendingRequests();
    } catch (const sdbus::Error&) {
        m_readWatch.reset();
        m_writeWatch.reset();
        m_timeLimit.reset();
        std::exchange(m_disconnected, [] {})();
    }
}

void BusOnMainLoop::processPendingRequests() {
    while (m_connection->processPendingRequest()) {
    }
    updateWriteWatch((m_connection->getEventLoopPollData().events & POLLOUT) != 0);
    updateTimeLimit();
}

void BusOnMainLoop::updateWriteWatch(bool wantsToWrite) {
    if (wantsToWrite == (m_writeWatch != nullptr)) {
        return;
    }
    const int descriptor = m_connection->getEventLoopPollData().fd;
    m_writeWatch = wantsToWrite ? m_loop.watch(descriptor, MainLoop::Readiness::Writable,
                                               [this] { process(); })
                                : nullptr;
}

void BusOnMainLoop::updateTimeLimit() {
    const int milliseconds = m_connection->getEventLoopPollData().getPollTimeout();
    m_timeLimit = milliseconds < 0 ? nullptr : m_loop.after(milliseconds, [this] { process(); });
}

} // namespace plenzo
