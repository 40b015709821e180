#pragma once

#include "platform/mail_clients.h"
#include "platform/script_runner.h"

#include <optional>
#include <string>

namespace plenzo {

/// The executable that makes a mail client take a message.
struct MailScript {
    std::string path;
    enum class Origin { User, Agent } origin = Origin::Agent;
    /// The path of the client's program, when only this told what client it is; else empty.
    std::string clientProgram = {};
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
    /// the agent's for the family of clients that this one belongs to. Its program tells that where
    /// the id does not: a client that makes itself the default may write an entry of its own, such
    /// as "userapp-Thunderbird-7AB1C2". An id that would be a path has none.
    [[nodiscard]] std::optional<MailScript> scriptOfClient(const MailClient& client) const;

private:
    [[nodiscard]] std::optional<MailScript> script(MailScript::Origin origin,
                                                   const std::string& name) const;
    [[nodiscard]] std::optional<MailScript> scriptOfFamily(const MailClient& client) const;

    const ScriptRunner& m_runner;
    Folders m_folders;
};

/// The name by which all variants of a client go, be they packaged otherwise or of another edition:
/// "thunderbird" of "thunderbird-esr", "org.mozilla.Thunderbird" and "thunderbird_thunderbird".
/// The name is the id of one or that of its program. Empty for a client of no known family.
[[nodiscard]] std::string mailClientFamily(const std::string& clientName);

} // namespace plenzo
