#pragma once

#include "platform/mail_clients.h"
#include "support/later.h"

#include <map>
#include <utility>
#include <vector>

namespace plenzo {

/// A desktop with the clients that a test installs; launching one makes it run.
class FakeMailClients final : public MailClients {
public:
    explicit FakeMailClients(Later& later) : m_later(later) {}

    [[nodiscard]] Handle
    findDefault(std::function<void(std::optional<MailClient>)> found) override {
        return m_later.call([this, found = std::move(found)] { found(defaultClient); });
    }
    [[nodiscard]] Handle isRunning(const std::string& clientId,
                                   std::function<void(bool)> answered) override {
        return m_later.call([this, clientId, answered = std::move(answered)] {
            answered(running.contains(clientId) && running.at(clientId));
        });
    }
    void launch(const std::string& clientId) override {
        launched.push_back(clientId);
        running[clientId] = true;
    }

    std::optional<MailClient> defaultClient;
    std::map<std::string, bool> running;
    std::vector<std::string> launched;

private:
    Later& m_later;
};

} // namespace plenzo
