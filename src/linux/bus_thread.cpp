#include "linux/bus_thread.h"

#include <poll.h>
#include <sdbus-c++/Error.h>
#include <sys/eventfd.h>

#include <array>
#include <cstdint>
#include <utility>

namespace plenzo {

BusThread::BusThread(std::unique_ptr<sdbus::IConnection> connection)
    : m_connection(std::move(connection)), m_wakeEvent(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

BusThread::~BusThread() {
    stop();
}

void BusThread::stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    wake();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void BusThread::start(std::function<void()> disconnected) {
    m_disconnected = std::move(disconnected);
    m_thread = std::thread([this] { run(); });
}

void BusThread::perform(std::function<void()> task) {
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    wake();
}

void BusThread::run() {
    try {
        serve();
    } catch (const sdbus::Error&) {
        m_disconnected();
    }
}

void BusThread::serve() {
    while (true) {
        const bool stopping = isStopping();
        bool busy = performTasks();
        if (stopping) {
            return;
        }
        busy = m_connection->processPendingRequest() || busy;
        if (!busy) {
            waitForWork();
        }
    }
}

void BusThread::waitForWork() const {
    const auto bus = m_connection->getEventLoopPollData();
    std::array<pollfd, 2> descriptors{pollfd{bus.fd, bus.events, 0},
                                      pollfd{m_wakeEvent.get(), POLLIN, 0}};
    ::poll(descriptors.data(), descriptors.size(), bus.getPollTimeout());
    std::uint64_t count = 0;
    if ((descriptors[1].revents & POLLIN) != 0) {
        [[maybe_unused]] const auto size = ::read(m_wakeEvent.get(), &count, sizeof count);
    }
}

void BusThread::wake() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(m_wakeEvent.get(), &one, sizeof one);
}

bool BusThread::performTasks() {
    std::vector<std::function<void()>> tasks;
    {
        const std::lock_guard lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const auto& task : tasks) {
        task();
    }
    return !tasks.empty();
}

bool BusThread::isStopping() {
    const std::lock_guard lock(m_mutex);
    return m_stopping;
}

} // namespace plenzo
