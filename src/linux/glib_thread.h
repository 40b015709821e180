#pragma once

#include <functional>
#include <thread>

struct _GMainContext;
struct _GMainLoop;

namespace plenzo {

/// A thread that runs tasks one after another and serves what GLib needs for them, with a context
/// of its own: GLib reads files, connects and waits for processes where it is called, which the
/// main loop must not.
class GLibThread {
public:
    GLibThread();
    GLibThread(const GLibThread&) = delete;
    GLibThread& operator=(const GLibThread&) = delete;
    /// Runs the tasks that still wait, and ends the thread.
    ~GLibThread();

    /// Runs the task on the thread, in the order of the calls.
    void post(std::function<void()> task);

private:
    void run();

    _GMainContext* m_context;
    _GMainLoop* m_loop;
    std::thread m_thread;
};

} // namespace plenzo
