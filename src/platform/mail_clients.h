#pragma once

#include "platform/handle.h"

#include <functional>
#include <optional>
#include <string>

namespace plenzo {

struct MailClient {
    /// The name of its desktop entry without ".desktop".
    std::string id;
    /// It has no window of its own, so there is no running one that could be spoken to.
    bool isOfTerminal = false;
    /// The path of what the entry starts; empty when that is not there.
    std::string program = {};
};

/// The mail clients of the desktop. Answers come later from the main loop, once each; destroying
/// the handle cancels them.
class MailClients {
public:
    MailClients() = default;
    MailClients(const MailClients&) = delete;
    MailClients& operator=(const MailClients&) = delete;
    virtual ~MailClients() = default;

    /// The default program of "mailto:" URLs, or nothing when there is none.
    [[nodiscard]] virtual Handle
    findDefault(std::function<void(std::optional<MailClient>)> found) = 0;
    /// Whether the user runs the client. Of one that is not there: no.
    [[nodiscard]] virtual Handle isRunning(const std::string& clientId,
                                           std::function<void(bool)> answered) = 0;
    /// Starts the client as its desktop entry says, without bringing it forward. What fails is
    /// left.
    virtual void launch(const std::string& clientId) = 0;
};

} // namespace plenzo
