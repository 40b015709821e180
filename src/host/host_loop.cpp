#include "host/host_loop.h"

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace plenzo {

namespace {

int blockedTerminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
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

HostLoop::HostLoop() : m_signalDescriptor(blockedTerminationSignals()) {}

HostLoop::~HostLoop() {
    close(m_signalDescriptor);
}

LoopEnd HostLoop::run(sdbus::IConnection& connection) {
    while (processPending(connection)) {
        const auto bus = connection.getEventLoopPollData();
        std::array<pollfd, 2> watched = {pollfd{m_signalDescriptor, POLLIN, 0},
                                         pollfd{bus.fd, bus.events, 0}};
        if (poll(watched.data(), watched.size(), bus.getPollTimeout()) < 0 && errno != EINTR) {
            return LoopEnd::BusGone;
        }
        if (watched[0].revents != 0) {
            return LoopEnd::Terminated;
        }
    }
    return LoopEnd::BusGone;
}

} // namespace plenzo
