#include "called_program.h"
#include "linux/workspace_of_desktop.h"
#include "private_desktop.h"
#include "support/fake_workspace.h"
#include "support/workspace_contract.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

/// What a program noted when it was started.
struct Start {
    std::string program, argumentCount, url, startupId, token;
};

Start nextStart() {
    std::istringstream line(PrivateDesktop::instance().nextStart());
    Start start;
    line >> start.program >> start.argumentCount >> start.url >> start.startupId >> start.token;
    return start;
}

class FakeWorkspaceUnderContract final : public WorkspaceContract {
public:
    Workspace& workspace() override { return m_workspace; }
    std::string scheme() override { return "any"; }
    std::string nextOpened() override {
        std::string opened = m_workspace.opened.empty() ? "nothing" : m_workspace.opened.front();
        m_workspace.opened.clear();
        return opened;
    }

private:
    FakeWorkspace m_workspace;
};

class WorkspaceOfDesktopUnderContract final : public WorkspaceContract {
public:
    Workspace& workspace() override { return m_workspace; }
    std::string scheme() override { return "plenzo-record"; }
    std::string nextOpened() override {
        const Start start = nextStart();
        return (start.token == "none" ? "open quietly " : "open ") + start.url;
    }

private:
    PrivateDesktop& m_desktop = PrivateDesktop::instance();
    WorkspaceOfDesktop m_workspace;
};

template <typename Contract>
class EveryKindOfWorkspace : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakeWorkspaceUnderContract, WorkspaceOfDesktopUnderContract>;
TYPED_TEST_SUITE(EveryKindOfWorkspace, Kinds);

TYPED_TEST(EveryKindOfWorkspace, HandsOverEachURLInTheWayThatWasAskedFor) {
    this->contract.handsOverEachURLInTheWayThatWasAskedFor();
}

TYPED_TEST(EveryKindOfWorkspace, HandsOverHostileTextsAsTheyStand) {
    this->contract.handsOverHostileTextsAsTheyStand();
}

class TheWorkspace : public testing::Test {
protected:
    void expectThatNothingWasStartedBefore(const std::string& url) {
        workspace.openURL(url);
        EXPECT_EQ(nextStart().url, url);
    }

    PrivateDesktop& desktop = PrivateDesktop::instance();
    WorkspaceOfDesktop workspace;
};

TEST_F(TheWorkspace, GivesAProgramThatComesForwardOneTokenUnderBothNames) {
    workspace.openURL("plenzo-record://show/a");
    const Start first = nextStart();
    EXPECT_EQ(first.argumentCount, "1");
    EXPECT_THAT(first.startupId, MatchesRegex("plenzoalarm-[0-9]+-[^ ]+-[0-9]+_TIME[0-9]+"));
    EXPECT_EQ(first.token, first.startupId);
    workspace.openURL("plenzo-record://show/a");
    EXPECT_NE(nextStart().token, first.token);
}

TEST_F(TheWorkspace, GivesAProgramThatStaysNoToken) {
    workspace.openURLWithoutActivation("plenzo-record://acknowledge/a");
    const Start start = nextStart();
    EXPECT_EQ(start.argumentCount, "1");
    EXPECT_EQ(start.startupId, "none") << "nor the one that the agent was started with";
    EXPECT_EQ(start.token, "none");
}

TEST(AWorkspaceWithoutADisplay, GivesNoToken) {
    PrivateDesktop& desktop = PrivateDesktop::instance();
    const std::string display = std::getenv("DISPLAY");
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        none != nullptr ? ::setenv("DISPLAY", none, 1) : ::unsetenv("DISPLAY");
        WorkspaceOfDesktop().openURL("plenzo-record://show/a");
        EXPECT_THAT(desktop.nextStart(), "record 1 plenzo-record://show/a none none");
    }
    ::setenv("DISPLAY", display.c_str(), 1);
}

TEST_F(TheWorkspace, CallsAProgramOnTheBus) {
    CalledProgram program(desktop.busAddress());
    const std::string url = "plenzo-called://show/$(touch%20x);'a'";
    workspace.openURL(url);
    auto call = program.nextCall();
    EXPECT_THAT(call.urls, ElementsAre(url));
    ASSERT_EQ(call.platformData.size(), 2U);
    const auto token = call.platformData["activation-token"].get<std::string>();
    EXPECT_THAT(token, MatchesRegex("plenzoalarm-.*_TIME[0-9]+"));
    EXPECT_EQ(call.platformData["desktop-startup-id"].get<std::string>(), token);

    workspace.openURLWithoutActivation("plenzo-called://acknowledge/a");
    call = program.nextCall();
    EXPECT_THAT(call.urls, ElementsAre("plenzo-called://acknowledge/a"));
    EXPECT_TRUE(call.platformData.empty());
}

TEST_F(TheWorkspace, WaitsForNobodyThatDoesNotAnswer) {
    CalledProgram program(desktop.busAddress(), CalledProgram::Answers::Never);
    workspace.openURL("plenzo-called://show/first");
    workspace.openURL("plenzo-called://show/second");
    expectThatNothingWasStartedBefore("plenzo-record://show/third");
    EXPECT_THAT(program.nextCall().urls, ElementsAre("plenzo-called://show/first"));
    EXPECT_THAT(program.nextCall().urls, ElementsAre("plenzo-called://show/second"));
}

TEST(AWorkspaceThatEnds, HasHandedOverEverything) {
    PrivateDesktop& desktop = PrivateDesktop::instance();
    CalledProgram program(desktop.busAddress());
    {
        WorkspaceOfDesktop workspace;
        workspace.openURLWithoutActivation("plenzo-called://acknowledge/a");
        workspace.openURLWithoutActivation("plenzo-record://acknowledge/b");
    }
    EXPECT_THAT(program.nextCall().urls, ElementsAre("plenzo-called://acknowledge/a"));
    EXPECT_EQ(nextStart().url, "plenzo-record://acknowledge/b");
}

TEST_F(TheWorkspace, DoesNothingWithoutAProgram) {
    for (const char* scheme : {"plenzo-missing", "plenzo-gone", "plenzo-absent"}) {
        workspace.openURL(std::string(scheme) + "://show/a");
        workspace.openURLWithoutActivation(std::string(scheme) + "://show/a");
    }
    expectThatNothingWasStartedBefore("plenzo-record://show/a");
}

TEST_F(TheWorkspace, DoesNothingWithWhatIsNoURL) {
    for (const std::string& text :
         {std::string(), std::string("plenzo-record"), std::string("//plenzo-record/a"),
          std::string("plenzo-record://show/a b"), std::string("plenzo-record://show/a\n"),
          std::string("plenzo-record://show/%zz"), std::string("plenzo-record://show/\xFF"),
          std::string("plenzo-record://show/a\0b", 24), std::string("/etc/passwd"),
          std::string("-plenzo-record://show/a")}) {
        workspace.openURL(text);
        workspace.openURLWithoutActivation(text);
    }
    expectThatNothingWasStartedBefore("plenzo-record://show/a");
}

TEST_F(TheWorkspace, StartsAProgramWhoseNameCannotBeCalled) {
    workspace.openURL("plenzo-crooked://show/a");
    EXPECT_EQ(nextStart().program, "crooked");
}

TEST_F(TheWorkspace, SurvivesAProgramThatFailsAndURLsThatAreTooLong) {
    workspace.openURL("plenzo-fails://show/a");
    EXPECT_EQ(nextStart().program, "fails");
    workspace.openURL("plenzo-record://show/" + std::string(5'000'000, 'a'));
    expectThatNothingWasStartedBefore("plenzo-record://show/a");
}

/// The processes whose parent this one is.
std::vector<std::string> namesOfChildren() {
    std::vector<std::string> names;
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        std::ifstream status(process.path() / "stat");
        std::string number, name, state;
        long parent = 0;
        if (status >> number >> name >> state >> parent && parent == ::getpid()) {
            names.push_back(name);
        }
    }
    return names;
}

TEST(AWorkspaceThatEnds, LeavesNoChildBehind) {
    PrivateDesktop::instance();
    {
        WorkspaceOfDesktop workspace;
        workspace.openURL("plenzo-fails://show/a");
        workspace.openURL("plenzo-record://show/a");
    }
    const std::vector<std::string> started{nextStart().program, nextStart().program};
    EXPECT_THAT(started, UnorderedElementsAre("fails", "record"));
    EXPECT_THAT(namesOfChildren(), ElementsAre("(dbus-daemon)"));
}

} // namespace
} // namespace plenzo
