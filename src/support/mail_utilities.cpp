#include "support/mail_utilities.h"

#include "support/mail_items.h"

#include <algorithm>
#include <string>
#include <utility>

namespace plenzo {

MailUtilities::MailUtilities(const Collaborators& collaborators)
    : m_collaborators(collaborators),
      m_scripts(collaborators.scripts, collaborators.scriptFolders) {}

void MailUtilities::mail(const MailMessage& message, Progress progress) {
    auto prepared = preparedForScript(message);
    if (!prepared || m_waiting.size() >= mostWaitingMessages) {
        progress.finished(false);
        return;
    }
    m_waiting.push_back({.message = std::move(*prepared), .progress = std::move(progress)});
    if (!m_task) {
        startNextTask();
    }
}

void MailUtilities::startNextTask() {
    if (m_waiting.empty()) {
        return;
    }
    m_task = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_step = m_collaborators.clients.findDefault([this](const std::optional<MailClient>& found) {
        useClient(found.value_or(MailClient{.id = clientWithoutDefault, .isOfTerminal = true}));
    });
}

void MailUtilities::useClient(const MailClient& client) {
    auto script = m_scripts.scriptOfClient(client);
    if (!script) {
        finish(false);
        return;
    }
    m_task->client = client;
    m_task->script = std::move(*script);
    launchMailerIfNecessary();
}

void MailUtilities::launchMailerIfNecessary() {
    const bool isForNobody =
        std::ranges::none_of(m_task->message.recipients, [](const MailRecipient& recipient) {
            return isUsableAddress(recipient.email);
        });
    if (m_task->client.isOfTerminal || isForNobody) {
        runForNextRecipient();
        return;
    }
    m_step = m_collaborators.clients.isRunning(m_task->client.id, [this](bool isRunning) {
        isRunning ? runForNextRecipient() : launch();
    });
}

void MailUtilities::launch() {
    m_collaborators.clients.launch(m_task->client.id);
    m_step = m_collaborators.delays.after(launchMilliseconds, [this] { runForNextRecipient(); });
}

void MailUtilities::runForNextRecipient() {
    const MailRecipient* recipient = takeRecipient();
    if (recipient == nullptr) {
        finish(m_task->hasSucceeded);
        return;
    }
    if (!std::exchange(m_task->hasBegun, true)) {
        m_task->progress.begins();
    }
    m_step = run(*recipient, [this](bool hasRunWell) { note(hasRunWell); });
}

Handle MailUtilities::run(const MailRecipient& recipient, std::function<void(bool)> finished) {
    return m_collaborators.scripts.run(
        {.program = m_task->script.path,
         .arguments = scriptArguments(m_task->message, recipient),
         .environment = {std::string(clientVariable) + "=" + m_task->client.id,
                         std::string(programVariable) + "=" + m_task->script.clientProgram}},
        std::move(finished));
}

/// The scripts go on alone.
void MailUtilities::completeAtOnce() {
    if (!m_task || !m_task->hasBegun) {
        return;
    }
    for (int count = 0; count < mostRunsAtOnce; ++count) {
        const MailRecipient* recipient = takeRecipient();
        if (recipient == nullptr) {
            return;
        }
        run(*recipient, [](bool /*hasRunWell*/) {}).reset();
    }
}

/// Null when there is none any more.
const MailRecipient* MailUtilities::takeRecipient() {
    const auto& recipients = m_task->message.recipients;
    while (m_task->nextRecipient < recipients.size()) {
        const MailRecipient& recipient = recipients[m_task->nextRecipient++];
        if (isUsableAddress(recipient.email)) {
            return &recipient;
        }
        m_task->hasSucceeded = m_task->hasSucceeded && recipient.email.empty();
    }
    return nullptr;
}

void MailUtilities::note(bool hasRunWell) {
    if (hasRunWell || m_task->script.origin == MailScript::Origin::User) {
        runForNextRecipient();
    } else {
        finish(false);
    }
}

void MailUtilities::finish(bool isTaken) {
    const auto finished = std::move(m_task->progress.finished);
    m_task.reset();
    m_step.reset();
    startNextTask();
    // Last, because it may destroy this object.
    finished(isTaken);
}

} // namespace plenzo
