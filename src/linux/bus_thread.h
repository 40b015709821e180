#pragma once

#include "linux/wire/file_descriptor.h"

#include <sdbus-c++/IConnection.h>

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace plenzo {

/// A bus connection with a thread of its own, so that reading a large message never holds the main
/// loop. Once the thread runs, the connection is used on it alone.
class BusThread {
public:
    /// Takes the connection over. What arrives before start() waits.
    explicit BusThread(std::unique_ptr<sdbus::IConnection> connection);
    BusThread(const BusThread&) = delete;
    BusThread& operator=(const BusThread&) = delete;
    /// Stops, and hands what was sent to the bus.
    ~BusThread();

    /// For use before start() and in tasks.
    [[nodiscard]] sdbus::IConnection& connection() { return *m_connection; }

    /// Starts the thread. `disconnected` is called on it, once, when the bus has gone.
    void start(std::function<void()> disconnected);

    /// Runs the tasks that still wait, and ends the thread.
    void stop();

    /// Runs the task on the thread, in the order of the calls. May be called from any thread.
    void perform(std::function<void()> task);

private:
    void run();
    void serve();
    void waitForWork() const;
    void wake() const;
    /// False when there were none.
    bool performTasks();
    [[nodiscard]] bool isStopping();

    std::unique_ptr<sdbus::IConnection> m_connection;
    std::function<void()> m_disconnected;
    FileDescriptor m_wakeEvent;
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_tasks;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace plenzo
