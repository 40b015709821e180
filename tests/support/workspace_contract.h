#pragma once

#include "platform/workspace.h"

#include <gtest/gtest.h>

#include <string>

namespace plenzo {

/// What every implementation of Workspace keeps to. A subclass gives the workspace, a scheme that
/// has a program, and what that program got next: "open URL" or "open quietly URL".
class WorkspaceContract {
public:
    WorkspaceContract() = default;
    WorkspaceContract(const WorkspaceContract&) = delete;
    WorkspaceContract& operator=(const WorkspaceContract&) = delete;
    virtual ~WorkspaceContract() = default;

    virtual Workspace& workspace() = 0;
    virtual std::string scheme() = 0;
    virtual std::string nextOpened() = 0;

    void handsOverEachURLInTheWayThatWasAskedFor() {
        workspace().openURL(scheme() + "://show/a");
        EXPECT_EQ(nextOpened(), "open " + scheme() + "://show/a");
        workspace().openURLWithoutActivation(scheme() + "://snooze/a/600");
        EXPECT_EQ(nextOpened(), "open quietly " + scheme() + "://snooze/a/600");
        workspace().openURL(scheme() + "://show/a");
        EXPECT_EQ(nextOpened(), "open " + scheme() + "://show/a");
    }

    void handsOverHostileTextsAsTheyStand() {
        for (const std::string path :
             {"show/$(touch%20x)", "show/`id`;reboot", "show/'a'&b|c*?~", "show/%22%25u%25U%3C",
              "new/a%0Ab%00", "show/$HOME/../..//", "-rf", "show/#%F0%9F%93%85"}) {
            const std::string url = scheme() + "://" + path;
            workspace().openURL(url);
            EXPECT_EQ(nextOpened(), "open " + url);
            workspace().openURLWithoutActivation(url);
            EXPECT_EQ(nextOpened(), "open quietly " + url);
        }
    }
};

} // namespace plenzo
