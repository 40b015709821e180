#pragma once

#include "platform/script_runner.h"

#include <optional>
#include <string>

namespace plenzo {

/// The executable that makes a mail client take a message.
struct MailScript {
    std::string path;
    enum class Origin { User, Agent } origin = Origin::Agent;
};

/// The scripts of the mail clients, in two folders: those that the user has written, and the
/// agent's own. A script is named after its client's desktop entry.
class MailScripts {
public:
    /// Neither folder need exist. An empty path stands for no folder.
    struct Folders {
        std::string ofUser;
        std::string ofAgent;
    };

    MailScripts(const ScriptRunner& runner, Folders folders)
        : m_runner(runner), m_folders(std::move(folders)) {}

    /// The user's script of just this client, with or without ".desktop"; else the agent's; else
    /// the agent's for the family of clients that this one belongs to. An id that would be a path
    /// has none.
    [[nodiscard]] std::optional<MailScript> scriptOfClient(const std::string& clientId) const;

private:
    [[nodiscard]] std::optional<MailScript> script(MailScript::Origin origin,
                                                   const std::string& name) const;

    const ScriptRunner& m_runner;
    Folders m_folders;
};

/// The name by which all variants of a client go, be they packaged otherwise or of another edition:
/// "thunderbird" of "thunderbird-esr", "org.mozilla.Thunderbird" and "thunderbird_thunderbird".
/// Empty for a client of no known family.
[[nodiscard]] std::string mailClientFamily(const std::string& clientId);

} // namespace plenzo
