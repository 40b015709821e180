#include "linux/script_runner_of_system.h"
#include "linux/wire/file_descriptor.h"
#include "support/environment_variable.h"
#include "support/fake_script_runner.h"
#include "support/running_loop.h"
#include "support/script_runner_contract.h"
#include "support/temporary_folder.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>

namespace plenzo {
namespace {

using testing::ElementsAre;

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> fieldsEndingWithNul(const std::string& bytes) {
    std::vector<std::string> fields;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const auto end = std::min(bytes.find('\0', begin), bytes.size());
        fields.push_back(bytes.substr(begin, end - begin));
        begin = end + 1;
    }
    return fields;
}

/// Shell scripts in a folder of the test's own, and the real runner.
class Scripts {
public:
    /// Gives its path. The lines find the folder in $folder.
    std::string add(const std::string& name, const std::string& lines) {
        std::string path = m_folder.file(name);
        std::ofstream(path) << "#!/bin/sh\nfolder='" << m_folder.path().string() << "'\n"
                            << lines << "\n";
        ::chmod(path.c_str(), 0700);
        return path;
    }
    [[nodiscard]] std::string file(const std::string& name) const { return m_folder.file(name); }
    RunningLoop& running() { return m_running; }
    ScriptRunner& runner() { return *m_runner; }
    void endRunner() { m_runner.reset(); }

private:
    static constexpr int patienceMilliseconds = 300;

    TemporaryFolder m_folder;
    RunningLoop m_running;
    std::optional<ScriptRunnerOfSystem> m_runner{std::in_place, m_running.loop(),
                                                 patienceMilliseconds};
};

class FakeScriptRunnerUnderContract final : public ScriptRunnerContract {
public:
    FakeScriptRunnerUnderContract() {
        m_runner.programs = {"/works", "/fails", "/hangs"};
        m_runner.failing = {"/fails"};
        m_runner.hanging = {"/hangs"};
    }
    ScriptRunner& runner() override { return m_runner; }
    std::string programThatWorks() override { return "/works"; }
    std::string programThatFails() override { return "/fails"; }
    std::string programThatHangs() override { return "/hangs"; }
    std::vector<std::string> notedArguments() override { return m_runner.calls.back().arguments; }
    void runUntil(const std::function<bool()>& isDone) override {
        m_later.run();
        m_runner.passLimit();
        EXPECT_TRUE(isDone());
    }

private:
    Later m_later;
    FakeScriptRunner m_runner{m_later};
};

class ScriptRunnerOfSystemUnderContract final : public ScriptRunnerContract {
public:
    ScriptRunner& runner() override { return m_scripts.runner(); }
    std::string programThatWorks() override { return m_works; }
    std::string programThatFails() override { return m_fails; }
    std::string programThatHangs() override { return m_hangs; }
    std::vector<std::string> notedArguments() override {
        return fieldsEndingWithNul(contents(m_scripts.file("arguments")));
    }
    void runUntil(const std::function<bool()>& isDone) override {
        m_scripts.running().runUntil(isDone);
    }

private:
    Scripts m_scripts;
    std::string m_works =
        m_scripts.add("works $(x)", "printf '%s\\0' \"$@\" >\"$folder/arguments\"");
    std::string m_fails = m_scripts.add("fails", "exit 1");
    std::string m_hangs = m_scripts.add("hangs", "while :; do sleep 60; done");
};

template <typename Contract>
class EveryKindOfScriptRunner : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakeScriptRunnerUnderContract, ScriptRunnerOfSystemUnderContract>;
TYPED_TEST_SUITE(EveryKindOfScriptRunner, Kinds);

TYPED_TEST(EveryKindOfScriptRunner, KnowsWhatCanBeRun) {
    this->contract.knowsWhatCanBeRun();
}

TYPED_TEST(EveryKindOfScriptRunner, TellsLaterWhatBecameOfEachProgram) {
    this->contract.tellsLaterWhatBecameOfEachProgram();
}

TYPED_TEST(EveryKindOfScriptRunner, CountsWhatExceedsItsLimitAsFailed) {
    this->contract.countsWhatExceedsItsLimitAsFailed();
}

TYPED_TEST(EveryKindOfScriptRunner, HandsOverHostileArgumentsAsTheyStand) {
    this->contract.handsOverHostileArgumentsAsTheyStand();
}

TYPED_TEST(EveryKindOfScriptRunner, ForgetsWhomNobodyWaitsFor) {
    this->contract.forgetsWhomNobodyWaitsFor();
}

class AScript : public testing::Test {
protected:
    bool runToEnd(const ScriptCall& call) {
        std::optional<bool> worked;
        const Handle run =
            scripts.runner().run(call, [&worked](bool hasWorked) { worked = hasWorked; });
        scripts.running().runUntil([&worked] { return worked.has_value(); });
        return worked.value_or(false);
    }
    bool runToEnd(const std::string& lines, int limitMilliseconds = 20'000) {
        return runToEnd(ScriptCall{.program = scripts.add("script", lines),
                                   .timeLimitMilliseconds = limitMilliseconds});
    }
    std::string noted() const { return contents(scripts.file("notes")); }

    Scripts scripts;
};

/// Waits until whoever has the other end of the pipe has gone, but not for ever.
bool hasBeenLeft(int pipe) {
    constexpr int limitMilliseconds = 10'000;
    std::array<char, 64> bytes{};
    pollfd readable{pipe, POLLIN, 0};
    while (::poll(&readable, 1, limitMilliseconds) == 1) {
        if (::read(pipe, bytes.data(), bytes.size()) <= 0) {
            return true;
        }
    }
    return false;
}

bool hasChildren() {
    return ::waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD;
}

TEST_F(AScript, FailsWithEveryExitStatusButZeroAndBySignals) {
    EXPECT_TRUE(runToEnd("exit 0"));
    for (const char* lines : {"exit 1", "exit 3", "exit 255", "kill -TERM $$", "kill -KILL $$",
                              "no-such-command-at-all"}) {
        EXPECT_FALSE(runToEnd(lines)) << lines;
    }
    EXPECT_FALSE(hasChildren());
}

TEST_F(AScript, IsAnExecutableRegularFile) {
    const std::string script = scripts.add("script", "exit 0");
    const std::string link = scripts.file("link");
    ASSERT_EQ(::symlink(script.c_str(), link.c_str()), 0);
    EXPECT_TRUE(scripts.runner().canRun(link));
    const std::string pipe = scripts.file("pipe");
    ::mkfifo(pipe.c_str(), 0700);
    const std::string text = scripts.file("text");
    std::ofstream(text) << "#!/bin/sh\n";
    for (const std::string& program :
         {pipe, text, scripts.file(""), std::string("script"), std::string("/dev/null")}) {
        EXPECT_FALSE(scripts.runner().canRun(program)) << program;
    }
    const std::string empty = scripts.file("empty");
    std::ofstream{empty};
    ::chmod(empty.c_str(), 0700);
    EXPECT_FALSE(runToEnd(ScriptCall{.program = empty})) << "it is no program, nor run by a shell";
}

TEST_F(AScript, HasNothingOfTheAgentsOpen) {
    // A careless library's.
    const int open = ::open("/dev/null", O_RDONLY);
    EXPECT_TRUE(runToEnd("cat; echo out; echo err >&2\n"
                         "ls -l /proc/$$/fd | sed -n 's/.* \\([0-9]*\\) -> /\\1 /p' | "
                         "grep -v \"$0\" >\"$folder/notes\""));
    ::close(open);
    EXPECT_EQ(noted(), "0 /dev/null\n1 /dev/null\n2 /dev/null\n");
}

TEST_F(AScript, HasOurEnvironmentWithoutTokensAndASessionOfItsOwn) {
    const EnvironmentVariable startupId("DESKTOP_STARTUP_ID", "mine");
    const EnvironmentVariable token("XDG_ACTIVATION_TOKEN", "mine");
    const EnvironmentVariable other("PLENZO_TEST", "a $b");
    const std::string lines =
        "echo \"${DESKTOP_STARTUP_ID-none} ${XDG_ACTIVATION_TOKEN-none} $PLENZO_TEST $ADDED\" "
        ">\"$folder/notes\"; read -r stat </proc/self/stat; set -- ${stat#*) }\n"
        "[ \"$3\" = $$ ] && [ \"$4\" = $$ ]";
    EXPECT_TRUE(
        runToEnd(ScriptCall{.program = scripts.add("script", lines), .environment = {"ADDED=c"}}));
    EXPECT_EQ(noted(), "none none a $b c\n");
}

TEST_F(AScript, IsNotStartedWithMoreThanTheKernelTakes) {
    const std::string script = scripts.add("script", "exit 0");
    EXPECT_FALSE(
        runToEnd(ScriptCall{.program = script, .arguments = {std::string(1'000'000, 'x')}}));
    EXPECT_TRUE(runToEnd(ScriptCall{.program = script, .arguments = {std::string(131'000, 'x')}}));
}

TEST_F(AScript, IsKilledWithAllThatItStartedWhenItDoesNotHeedItsLimit) {
    const std::string pipe = scripts.file("pipe");
    ::mkfifo(pipe.c_str(), 0600);
    const FileDescriptor reader(::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    // Who holds the writing end lives.
    const std::string child = "trap '' TERM; (trap '' TERM; while :; do sleep 60; done) &\n";
    EXPECT_FALSE(runToEnd("exec 3>\"$folder/pipe\"\n" + child + "while :; do sleep 60; done", 300));
    EXPECT_TRUE(hasBeenLeft(reader.get()));
    EXPECT_FALSE(runToEnd("exec 3>\"$folder/pipe\"\n" + child +
                              "trap 'exit 0' TERM; while :; do sleep 0.05; done",
                          300))
        << "although it ends well then";
    EXPECT_TRUE(hasBeenLeft(reader.get()));
}

TEST_F(AScript, MayLeaveBehindWhatItStarted) {
    const std::string pipe = scripts.file("pipe");
    ::mkfifo(pipe.c_str(), 0600);
    const FileDescriptor reader(::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_TRUE(runToEnd("(exec 3>\"$folder/pipe\"; echo on >&3; until [ -e \"$folder/go\" ]; do "
                         "sleep 0.05; done; echo done >\"$folder/notes\") &\nexit 0"));
    std::ofstream(scripts.file("go")) << "go";
    EXPECT_TRUE(hasBeenLeft(reader.get()));
    EXPECT_EQ(noted(), "done\n");
}

TEST_F(AScript, GoesOnWithoutTheRunner) {
    const std::string pipe = scripts.file("pipe");
    ::mkfifo(pipe.c_str(), 0600);
    const FileDescriptor reader(::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    const std::string script = scripts.add(
        "script", "exec 3>\"$folder/pipe\"; echo on >&3; until [ -e \"$folder/go\" ]; do "
                  "sleep 0.05; done; echo done >\"$folder/notes\"");
    Handle run = scripts.runner().run({.program = script}, [](bool /*worked*/) { FAIL(); });
    scripts.endRunner();
    std::ofstream(scripts.file("go")) << "go";
    EXPECT_TRUE(hasBeenLeft(reader.get()));
    EXPECT_EQ(noted(), "done\n");
    while (::waitpid(-1, nullptr, 0) > 0) {
    }
}

} // namespace
} // namespace plenzo
