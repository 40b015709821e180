#pragma once

#include "linux/main_loop.h"
#include "platform/script_runner.h"

#include <list>
#include <memory>

namespace plenzo {

/// Runs programs as processes that the main loop watches. Each gets the agent's environment without
/// the tokens by which it could come forward, and no open file of the agent's. One that exceeds its
/// limit is asked to end, with its process group, and then killed. At the agent's end the programs
/// that are within their limit go on by themselves.
class ScriptRunnerOfSystem final : public ScriptRunner {
public:
    /// The patience is between asking and killing.
    explicit ScriptRunnerOfSystem(MainLoop& loop, int patienceMilliseconds = 5000);
    ScriptRunnerOfSystem(const ScriptRunnerOfSystem&) = delete;
    ScriptRunnerOfSystem& operator=(const ScriptRunnerOfSystem&) = delete;
    ~ScriptRunnerOfSystem() override;

    [[nodiscard]] bool canRun(const std::string& program) const override;
    [[nodiscard]] Handle run(const ScriptCall& call, std::function<void(bool)> finished) override;

private:
    class Run;
    using Runs = std::list<std::unique_ptr<Run>>;

    MainLoop& m_loop;
    int m_patienceMilliseconds;
    Runs m_runs;
};

} // namespace plenzo
