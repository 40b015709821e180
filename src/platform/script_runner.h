#pragma once

#include "platform/handle.h"

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// One run of a program: never through a shell, so that every argument arrives as it stands.
struct ScriptCall {
    /// An absolute path.
    std::string program;
    std::vector<std::string> arguments = {};
    /// Beside the agent's own: "NAME=value".
    std::vector<std::string> environment = {};
    int timeLimitMilliseconds = 60'000;
};

/// Runs programs in the background.
class ScriptRunner {
public:
    ScriptRunner() = default;
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;
    virtual ~ScriptRunner() = default;

    /// Whether a regular file is there that the user may execute. Links are followed.
    [[nodiscard]] virtual bool canRun(const std::string& program) const = 0;
    /// Starts the program and calls `finished` later from the main loop: true when it has ended
    /// with exit status 0. One that cannot be started has failed, as has one that exceeds its
    /// limit, which is ended with all that it has started. Destroying the handle cancels the
    /// callback and leaves the program to itself, but not beyond its limit.
    [[nodiscard]] virtual Handle run(const ScriptCall& call,
                                     std::function<void(bool)> finished) = 0;
};

} // namespace plenzo
