#pragma once

#include "platform/script_runner.h"
#include "support/later.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace plenzo {

/// Programs that are only remembered: those in `programs` can be run, those in `failing` fail, and
/// those in `hanging` exceed their limit, which a test brings about.
class FakeScriptRunner final : public ScriptRunner {
public:
    explicit FakeScriptRunner(Later& later) : m_later(later) {}

    [[nodiscard]] bool canRun(const std::string& program) const override {
        return programs.contains(program);
    }
    [[nodiscard]] Handle run(const ScriptCall& call, std::function<void(bool)> finished) override {
        if (!canRun(call.program)) {
            return m_later.call([finished = std::move(finished)] { finished(false); });
        }
        calls.push_back(call);
        if (hanging.contains(call.program)) {
            return m_hung.call([finished = std::move(finished)] { finished(false); });
        }
        const bool works = !failing.contains(call.program);
        return m_later.call([works, finished = std::move(finished)] { finished(works); });
    }

    /// Of the one that has hung the longest.
    void passLimit() { m_hung.runNext(); }

    std::set<std::string> programs;
    std::set<std::string> failing;
    std::set<std::string> hanging;
    std::vector<ScriptCall> calls;

private:
    Later& m_later;
    Later m_hung;
};

} // namespace plenzo
