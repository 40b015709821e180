#pragma once

#include "platform/delays.h"
#include "platform/mail_clients.h"
#include "platform/mailer.h"
#include "platform/script_runner.h"
#include "support/mail_scripts.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>

namespace plenzo {

/// Sends mail through the user's mail client, by a script of that client's that is run for each
/// recipient. Messages go one after the other and each recipient's run follows the one before, so
/// that a client never gets two at once; nothing waits for them, the agent's end neither.
class MailUtilities final : public Mailer {
public:
    struct Collaborators {
        MailClients& clients;
        ScriptRunner& scripts;
        Delays& delays;
        MailScripts::Folders scriptFolders;
    };

    /// Messages beyond these are refused.
    static constexpr std::size_t mostWaitingMessages = 1000;
    /// More scripts than these are not started at once at the end.
    static constexpr int mostRunsAtOnce = 50;
    /// What a client that had to be launched gets until it is spoken to.
    static constexpr int launchMilliseconds = 5000;
    /// The client, as far as scripts are concerned, of a desktop that has no default for mail: a
    /// user who has no mail client either may still have written a script.
    static constexpr const char* clientWithoutDefault = "default";
    /// By this variable of its environment a script that serves several clients learns of the one.
    static constexpr const char* clientVariable = "PLENZO_MAIL_CLIENT";
    /// By this one, of the program to call, when it is not the one of the client's usual name.
    static constexpr const char* programVariable = "PLENZO_MAIL_PROGRAM";

    explicit MailUtilities(const Collaborators& collaborators);

    /// False when there is no script for the default client, when one of the agent's own scripts
    /// fails, which ends the message, and when a recipient's address cannot be used, which spares
    /// the others. What becomes of a run of the user's script is the user's business. Recipients
    /// without an address are passed over.
    void mail(const MailMessage& message, Progress progress) override;
    void completeAtOnce() override;

private:
    struct Task {
        MailMessage message;
        Progress progress;
        std::size_t nextRecipient = 0;
        MailClient client = {};
        MailScript script = {};
        bool hasBegun = false;
        bool hasSucceeded = true;
    };

    void startNextTask();
    void useClient(const MailClient& client);
    void launchMailerIfNecessary();
    void launch();
    void runForNextRecipient();
    [[nodiscard]] Handle run(const MailRecipient& recipient, std::function<void(bool)> finished);
    void note(bool hasRunWell);
    void finish(bool isTaken);
    [[nodiscard]] const MailRecipient* takeRecipient();

    Collaborators m_collaborators;
    MailScripts m_scripts;
    std::deque<Task> m_waiting;
    std::optional<Task> m_task;
    /// What the task under way waits for.
    Handle m_step;
};

} // namespace plenzo
