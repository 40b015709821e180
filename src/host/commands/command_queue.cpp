#include "host/commands/command_queue.h"

#include "host/commands/unique_identifiers.h"

#include <algorithm>
#include <ctime>
#include <vector>

namespace plenzo {

namespace {

using Kind = HostCommand::Kind;
using State = CommandResult::State;

constexpr int firstRetrySeconds = 5;
constexpr int longestRetrySeconds = 300;
constexpr int millisecondsPerSecond = 1000;
constexpr cctz::seconds longestDoubt{60};
constexpr cctz::seconds longestWait{3 * 86'400};

/// Only what changes something is worth keeping.
bool isChange(const HostCommand& command) {
    return command.kind != Kind::Show && command.kind != Kind::Info &&
           command.kind != Kind::Preferences;
}

std::string whatFailed(const HostCommand& command) {
    switch (command.kind) {
    case Kind::Snooze:
        return "An alarm could not be snoozed";
    case Kind::Acknowledge:
        return "A dismissed alarm could not be noted";
    case Kind::Complete:
        return command.completion == Completion::Done ? "A to-do could not be completed"
                                                      : "A to-do could not be reopened";
    case Kind::New:
        return "“" + command.text + "” could not be saved";
    case Kind::Preferences:
        return "The configuration could not be opened";
    case Kind::Show:
    case Kind::Info:
        break;
    }
    return "An item could not be shown";
}

} // namespace

CommandQueue::CommandQueue(CommandWorld& world, CommandExecution& execution,
                           PendingCommands& pending, UserMessages& messages)
    : m_world(world), m_execution(execution), m_pending(pending), m_messages(messages),
      m_retry(CLOCK_MONOTONIC), m_retrySeconds(firstRetrySeconds) {}

void CommandQueue::receive(const std::string& url, const std::string& activationToken) {
    const auto command = readHostCommand(url);
    if (!command) {
        constexpr std::size_t mostShown = 200;
        m_messages.note("no command: " + url.substr(0, mostShown));
        return;
    }
    const PendingCommand pending{url, *command, m_world.now(), newUniqueIdentifier()};
    keep(pending);
    if (tryOne(pending, activationToken)) {
        forget(pending);
    } else {
        waitForRetry();
    }
}

void CommandQueue::keep(const PendingCommand& command) {
    if (!isChange(command.command)) {
        return;
    }
    const std::string error = m_pending.add(command);
    if (!error.empty()) {
        m_messages.note("a command could not be written down, and is in memory alone: " + error);
    }
}

void CommandQueue::forget(const PendingCommand& command) {
    m_told.erase(command.id);
    if (!isChange(command.command)) {
        return;
    }
    const std::string error = m_pending.remove(command.id);
    if (!error.empty()) {
        m_messages.note("the commands that wait could not be written down: " + error);
    }
}

/// Whether nothing is left to be done.
bool CommandQueue::tryOne(const PendingCommand& command, const std::string& token) {
    const CommandResult result = settled(m_execution.execute(command, token), command);
    if (result.state == State::Waits || result.state == State::Refused) {
        tell(command, result);
    } else if (result.state == State::Done && !result.problem.empty()) {
        m_messages.note(result.problem);
    }
    return result.state == State::Done || result.state == State::Refused;
}

/// Nothing waits for ever.
CommandResult CommandQueue::settled(CommandResult result, const PendingCommand& command) {
    const auto age = m_world.now() - command.received;
    if (result.state == State::Waits && age > longestWait) {
        result.state = State::Refused;
    } else if (result.state == State::Doubtful && age > longestDoubt) {
        result.state = result.problem.empty() ? State::Done : State::Refused;
    }
    return result;
}

void CommandQueue::tell(const PendingCommand& command, const CommandResult& result) {
    const bool isWaiting = result.state == State::Waits;
    if (isWaiting && !m_told.insert(command.id).second) {
        return;
    }
    m_messages.tell(whatFailed(command.command),
                    result.problem + (isWaiting ? ". It is kept and tried again." : "."));
}

void CommandQueue::tryAgain() {
    const std::vector<PendingCommand> commands = m_pending.all();
    for (const PendingCommand& command : commands) {
        if (tryOne(command, {})) {
            forget(command);
        }
    }
    if (m_pending.all().empty()) {
        m_retrySeconds = firstRetrySeconds;
    } else {
        waitForRetry();
    }
}

void CommandQueue::noteRetry() {
    m_retry.acknowledge();
    m_retrySeconds = std::min(m_retrySeconds * 2, longestRetrySeconds);
}

void CommandQueue::waitForRetry() {
    m_retry.expireIn(m_retrySeconds * millisecondsPerSecond);
}

} // namespace plenzo
