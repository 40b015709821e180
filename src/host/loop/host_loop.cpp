#include "host/loop/host_loop.h"

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>
#include <sys/signalfd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>

namespace plenzo {

namespace {

sigset_t terminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

int openTerminationSignals() {
    const sigset_t signals = terminationSignals();
    return signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

bool processPending(sdbus::IConnection& connection) {
    try {
        while (connection.processPendingRequest()) {
        }
        return true;
    } catch (const sdbus::Error&) {
        return false;
    }
}

} // namespace

HostLoop::HostLoop() : m_signals(openTerminationSignals()) {
    blockTerminationSignals();
}

void HostLoop::blockTerminationSignals() {
    const sigset_t signals = terminationSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

LoopEnd HostLoop::run(sdbus::IConnection& connection) {
    LoopEnd end = LoopEnd::None;
    while (end == LoopEnd::None) {
        end = processPending(connection) ? wait(connection) : LoopEnd::BusGone;
    }
    return end;
}

LoopEnd HostLoop::wait(sdbus::IConnection& connection) {
    const auto bus = connection.getEventLoopPollData();
    std::vector<pollfd> watched = {pollfd{m_signals.get(), POLLIN, 0},
                                   pollfd{bus.fd, bus.events, 0}};
    for (const auto& [descriptor, ready] : m_watches) {
        watched.push_back({descriptor, POLLIN, 0});
    }
    if (poll(watched.data(), watched.size(), bus.getPollTimeout()) < 0 && errno != EINTR) {
        return LoopEnd::BusGone;
    }
    if (watched[0].revents != 0) {
        return LoopEnd::Terminated;
    }
    constexpr std::size_t firstWatch = 2;
    for (std::size_t index = firstWatch; index < watched.size(); ++index) {
        if (watched[index].revents != 0) {
            m_watches[index - firstWatch].second();
        }
    }
    return m_isToEnd ? LoopEnd::Asked : LoopEnd::None;
}

} // namespace plenzo
