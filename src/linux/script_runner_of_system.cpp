#include "linux/script_runner_of_system.h"

#include "linux/cancellable_callback.h"
#include "linux/child_process.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

constexpr std::string_view tokenVariables[] = {"DESKTOP_STARTUP_ID=", "XDG_ACTIVATION_TOKEN="};

std::vector<std::string> environmentOfScripts(const std::vector<std::string>& additions) {
    std::vector<std::string> variables;
    for (char** variable = ::environ; variable != nullptr && *variable != nullptr; ++variable) {
        const std::string_view text(*variable);
        const bool isToken = std::ranges::any_of(
            tokenVariables, [text](std::string_view token) { return text.starts_with(token); });
        if (!isToken) {
            variables.emplace_back(text);
        }
    }
    variables.insert(variables.end(), additions.begin(), additions.end());
    return variables;
}

} // namespace

/// One program, from its start to its reaping.
class ScriptRunnerOfSystem::Run {
public:
    using Finished = CancellableCallback<bool>;

    Run(MainLoop& loop, ChildProcess process, Finished finished)
        : m_loop(loop), m_process(std::move(process)), m_finished(std::move(finished)) {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() {
        if (m_isToEnd) {
            m_process.signalGroup(SIGKILL);
        }
    }

    /// `forget` destroys this object.
    void watch(int limitMilliseconds, int patienceMilliseconds, std::function<void()> forget) {
        m_end = m_loop.watch(m_process.descriptor(), MainLoop::Readiness::Readable,
                             [this, forget = std::move(forget)] { noteEnd(forget); });
        m_limit = m_loop.after(limitMilliseconds,
                               [this, patienceMilliseconds] { askToEnd(patienceMilliseconds); });
    }

private:
    void askToEnd(int patienceMilliseconds) {
        m_isToEnd = true;
        m_process.signalGroup(SIGTERM);
        m_limit = m_loop.after(patienceMilliseconds, [this] { kill(); });
    }

    /// Even this may take: a program that waits for a disk ends when that answers.
    void kill() {
        m_process.signalGroup(SIGKILL);
        // Last, because the callback may destroy the runner.
        std::exchange(m_finished, {})(false);
    }

    void noteEnd(const std::function<void()>& forget) {
        if (m_isToEnd) {
            // What it has started and what did not heed the request.
            m_process.signalGroup(SIGKILL);
        }
        const bool hasRunWell = m_process.reap() && !m_isToEnd;
        m_isToEnd = false;
        const Finished finished = std::move(m_finished);
        forget();
        finished(hasRunWell);
    }

    MainLoop& m_loop;
    ChildProcess m_process;
    Finished m_finished;
    bool m_isToEnd = false;
    Handle m_end;
    Handle m_limit;
};

ScriptRunnerOfSystem::ScriptRunnerOfSystem(MainLoop& loop, int patienceMilliseconds)
    : m_loop(loop), m_patienceMilliseconds(patienceMilliseconds) {}

ScriptRunnerOfSystem::~ScriptRunnerOfSystem() = default;

bool ScriptRunnerOfSystem::canRun(const std::string& program) const {
    std::error_code error;
    return program.starts_with('/') && std::filesystem::is_regular_file(program, error) &&
           ::access(program.c_str(), X_OK) == 0;
}

Handle ScriptRunnerOfSystem::run(const ScriptCall& call, std::function<void(bool)> finished) {
    auto process =
        ChildProcess::start(call.program, call.arguments, environmentOfScripts(call.environment));
    if (!process) {
        return m_loop.after(0, [finished = std::move(finished)] { finished(false); });
    }
    auto [callback, handle] = Run::Finished::make(std::move(finished));
    m_runs.push_front(std::make_unique<Run>(m_loop, std::move(*process), std::move(callback)));
    const auto place = m_runs.begin();
    (*place)->watch(call.timeLimitMilliseconds, m_patienceMilliseconds,
                    [this, place] { m_runs.erase(place); });
    return std::move(handle);
}

} // namespace plenzo
