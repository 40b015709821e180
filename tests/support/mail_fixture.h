#pragma once

#include "support/fake_delays.h"
#include "support/fake_mail_clients.h"
#include "support/fake_script_runner.h"
#include "support/mail_utilities.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace plenzo {

using Strings = std::vector<std::string>;

inline constexpr const char* ofUser = "/home/ana/.local/share/PlenzoAlarm/Scripts";
inline constexpr const char* ofAgent = "/usr/share/plenzoalarm/scripts";

inline std::string userScript(const std::string& name) {
    return std::string(ofUser) + "/" + name;
}
inline std::string agentScript(const std::string& name) {
    return std::string(ofAgent) + "/" + name;
}

inline MailMessage messageTo(const Strings& addresses) {
    MailMessage message{
        .attachment = {}, .recipients = {}, .subject = "Stand-up", .body = "At 9:15"};
    for (const std::string& address : addresses) {
        message.recipients.push_back({.email = address, .name = {}});
    }
    return message;
}

/// A desktop whose mail client runs, and for which the agent has a script.
class MailOfAnAgent : public testing::Test {
protected:
    MailOfAnAgent() {
        clients.defaultClient = {.id = "birdmail"};
        clients.running["birdmail"] = true;
        runner.programs.insert(agentScript("birdmail"));
    }

    void mail(const MailMessage& message) {
        mailer->mail(message, {.begins = [this] { begun.push_back(runner.calls.size()); },
                               .finished = [this](bool isTaken) { results.push_back(isTaken); }});
    }
    void mailAndWait(const MailMessage& message) {
        mail(message);
        later.run();
    }

    Strings programs() const {
        Strings names;
        for (const ScriptCall& call : runner.calls) {
            names.push_back(call.program);
        }
        return names;
    }
    /// The item of every call so far.
    Strings items(std::size_t number) const {
        Strings texts;
        for (const ScriptCall& call : runner.calls) {
            texts.push_back(call.arguments.at(number));
        }
        return texts;
    }
    Strings addresses() const { return items(5); }

    Later later;
    FakeMailClients clients{later};
    FakeScriptRunner runner{later};
    FakeDelays delays;
    std::vector<bool> results;
    /// How many scripts had run before each message that has begun.
    std::vector<std::size_t> begun;
    std::unique_ptr<MailUtilities> mailer = std::make_unique<MailUtilities>(
        MailUtilities::Collaborators{.clients = clients,
                                     .scripts = runner,
                                     .delays = delays,
                                     .scriptFolders = {.ofUser = ofUser, .ofAgent = ofAgent}});
};

} // namespace plenzo
