#pragma once

#include "platform/mail_clients.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// What every implementation of MailClients keeps to. A subclass gives a desktop on which the
/// default client is "birdmail", with a window and not running, and a way to let everything happen,
/// which returns when `isDone` holds.
class MailClientsContract {
public:
    MailClientsContract() = default;
    MailClientsContract(const MailClientsContract&) = delete;
    MailClientsContract& operator=(const MailClientsContract&) = delete;
    virtual ~MailClientsContract() = default;

    virtual MailClients& clients() = 0;
    virtual void runUntil(const std::function<bool()>& isDone) = 0;
    /// Returns when the client that was launched is there.
    virtual void waitForClient() = 0;
    /// The client is of no use any more.
    virtual void endClient() = 0;

    void findsTheDefaultAndTellsItLater() {
        std::optional<MailClient> client;
        const Handle asked = clients().findDefault(
            [&client](const std::optional<MailClient>& found) { client = found; });
        EXPECT_FALSE(client);
        runUntil([&client] { return client.has_value(); });
        ASSERT_TRUE(client);
        EXPECT_EQ(client->id, "birdmail");
        EXPECT_FALSE(client->isOfTerminal);
    }

    void launchesAClientThatThenRuns() {
        EXPECT_FALSE(isRunning("birdmail"));
        clients().launch("birdmail");
        waitForClient();
        EXPECT_TRUE(isRunning("birdmail"));
        endClient();
    }

    void knowsNothingOfClientsThatAreNotThere() {
        for (const char* id : {"no-such-client", "", "..", "a/b", "\xFF\n"}) {
            EXPECT_FALSE(isRunning(id)) << id;
        }
    }

    void tellsNobodyWhoHasLeft() {
        std::vector<std::string> answers;
        Handle left =
            clients().isRunning("birdmail", [&answers](bool) { answers.emplace_back("left"); });
        Handle own;
        own = clients().isRunning("birdmail", [&own, &answers](bool) {
            own.reset();
            answers.emplace_back("own");
        });
        left.reset();
        runUntil([&answers] { return !answers.empty(); });
        EXPECT_THAT(answers, testing::ElementsAre("own"));
    }

protected:
    bool isRunning(const std::string& clientId) {
        std::optional<bool> answer;
        const Handle asked =
            clients().isRunning(clientId, [&answer](bool isRunning) { answer = isRunning; });
        runUntil([&answer] { return answer.has_value(); });
        return answer.value_or(false);
    }
};

} // namespace plenzo
