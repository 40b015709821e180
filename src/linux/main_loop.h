#pragma once

#include "platform/handle.h"

#include <functional>

namespace plenzo {

/// The program's one event loop: Qt's, which later draws the windows too. Needs the application
/// object to exist.
class MainLoop {
public:
    /// Runs until quit(); gives the exit code handed to it.
    int run();
    /// Ends run() once the current callback has returned.
    void quit(int exitCode);

    /// Runs the task on the loop's thread, after those posted before it. May be called from any
    /// thread; a task posted after the loop's end never runs.
    void post(std::function<void()> task);

    enum class Readiness { Readable, Writable };
    /// Calls `ready` whenever the descriptor is ready in that way. The descriptor must outlive the
    /// handle.
    [[nodiscard]] Handle watch(int descriptor, Readiness readiness, std::function<void()> ready);

    /// Calls `elapsed` once, that many milliseconds of running time from now; for time limits, not
    /// for dates.
    [[nodiscard]] Handle after(int milliseconds, std::function<void()> elapsed);
};

} // namespace plenzo
