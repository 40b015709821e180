#pragma once

#include "platform/script_runner.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// What every implementation of ScriptRunner keeps to. A subclass gives the runner, programs of
/// three kinds, what a program noted of its arguments, and a way to let everything happen, which
/// returns when `isDone` holds.
class ScriptRunnerContract {
public:
    ScriptRunnerContract() = default;
    ScriptRunnerContract(const ScriptRunnerContract&) = delete;
    ScriptRunnerContract& operator=(const ScriptRunnerContract&) = delete;
    virtual ~ScriptRunnerContract() = default;

    virtual ScriptRunner& runner() = 0;
    virtual std::string programThatWorks() = 0;
    virtual std::string programThatFails() = 0;
    virtual std::string programThatHangs() = 0;
    /// Of the program that works, when it ran last.
    virtual std::vector<std::string> notedArguments() = 0;
    virtual void runUntil(const std::function<bool()>& isDone) = 0;

    void knowsWhatCanBeRun() {
        EXPECT_TRUE(runner().canRun(programThatWorks()));
        EXPECT_TRUE(runner().canRun(programThatFails()));
        for (const std::string& program : {std::string(), programThatWorks() + "-not"}) {
            EXPECT_FALSE(runner().canRun(program)) << program;
        }
    }

    void tellsLaterWhatBecameOfEachProgram() {
        const Handle good = start("good", programThatWorks());
        const Handle bad = start("bad", programThatFails());
        const Handle none = start("none", programThatWorks() + "-not");
        EXPECT_THAT(m_ends, testing::IsEmpty());
        runUntil([this] { return m_ends.size() == 3; });
        EXPECT_THAT(m_ends,
                    testing::UnorderedElementsAre("good worked", "bad failed", "none failed"));
    }

    void countsWhatExceedsItsLimitAsFailed() {
        const Handle hanging = start("hanging", programThatHangs(), 50);
        runUntil([this] { return m_ends.size() == 1; });
        EXPECT_THAT(m_ends, testing::ElementsAre("hanging failed"));
    }

    void handsOverHostileArgumentsAsTheyStand() {
        const std::vector<std::string> arguments{"mail_attachment",
                                                 "",
                                                 "$(touch touched)",
                                                 "`touch touched`; touch touched",
                                                 "a 'b' \"c\" \\",
                                                 "\n\n",
                                                 "-rf",
                                                 "--",
                                                 "\u202Edetrever\u200F",
                                                 "\xFF*",
                                                 "%s%n ~ {a,b}",
                                                 std::string(120'000, 'x'),
                                                 std::string(120'000, '\n')};
        const Handle run = start("run", programThatWorks(), 20'000, arguments);
        runUntil([this] { return !m_ends.empty(); });
        EXPECT_THAT(m_ends, testing::ElementsAre("run worked"));
        EXPECT_EQ(notedArguments(), arguments);
    }

    void forgetsWhomNobodyWaitsFor() {
        Handle forgotten = start("forgotten", programThatWorks());
        Handle own;
        own = runner().run({.program = programThatWorks()}, [this, &own](bool /*worked*/) {
            own.reset();
            m_ends.emplace_back("own");
        });
        forgotten.reset();
        runUntil([this] { return !m_ends.empty(); });
        EXPECT_THAT(m_ends, testing::ElementsAre("own"));
    }

protected:
    Handle start(const std::string& name, const std::string& program,
                 int limitMilliseconds = 20'000, std::vector<std::string> arguments = {}) {
        return runner().run({.program = program,
                             .arguments = std::move(arguments),
                             .environment = {},
                             .timeLimitMilliseconds = limitMilliseconds},
                            [this, name](bool worked) {
                                m_ends.push_back(name + (worked ? " worked" : " failed"));
                            });
    }

private:
    std::vector<std::string> m_ends;
};

} // namespace plenzo
