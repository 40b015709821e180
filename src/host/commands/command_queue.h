#pragma once

#include "host/commands/command_execution.h"
#include "host/commands/pending_commands.h"
#include "host/commands/user_messages.h"
#include "host/loop/one_shot_timer.h"

#include <set>
#include <string>

namespace plenzo {

/// Takes the URLs of the agent and has them carried out in their order. A change that cannot be
/// made yet stays: it is tried again when calendars change, after some seconds, and then at longer
/// and longer intervals, up to three days. The user is told once. What the files do not hold is
/// looked for a minute before the user is told.
class CommandQueue {
public:
    CommandQueue(CommandWorld& world, CommandExecution& execution, PendingCommands& pending,
                 UserMessages& messages);

    /// A text that is no command is named on standard error.
    void receive(const std::string& url, const std::string& activationToken);

    /// Tries what waits, such as what a former run left.
    void tryAgain();

    /// Becomes readable when it is time to try again, until that was noted.
    [[nodiscard]] int descriptor() const { return m_retry.descriptor(); }
    void noteRetry();

private:
    void keep(const PendingCommand& command);
    void forget(const PendingCommand& command);
    bool tryOne(const PendingCommand& command, const std::string& token);
    [[nodiscard]] CommandResult settled(CommandResult result, const PendingCommand& command);
    void tell(const PendingCommand& command, const CommandResult& result);
    void waitForRetry();

    CommandWorld& m_world;
    CommandExecution& m_execution;
    PendingCommands& m_pending;
    UserMessages& m_messages;
    std::set<std::string> m_told; // the ids of commands of which the user knows that they wait
    OneShotTimer m_retry;
    int m_retrySeconds;
};

} // namespace plenzo
