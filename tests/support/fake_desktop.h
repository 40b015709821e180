#pragma once

#include "platform/disposal.h"
#include "platform/distributed_notifications.h"
#include "platform/host_link.h"
#include "platform/localized_strings.h"
#include "platform/regional_settings.h"
#include "platform/standard_folders.h"
#include "support/fake_user_notification_center.h"
#include "support/journal.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

class FakeHostLink final : public HostLink {
public:
    explicit FakeHostLink(Journal& journal) : m_journal(journal) {}
    void open(PlenzoAlarmProtocol& exported) override {
        m_journal.emplace_back("open link");
        agent = &exported;
        for (const Operation& operation : std::exchange(m_early, {})) {
            send(operation);
        }
    }
    void close() override {
        m_journal.emplace_back("close link");
        agent = nullptr;
        m_isClosed = true;
    }

    using Operation = std::function<void(PlenzoAlarmProtocol&)>;
    /// Plays the host. What is sent before the link is open waits for that.
    void send(const Operation& operation) {
        if (agent != nullptr) {
            operation(*agent);
        } else if (!m_isClosed) {
            m_early.push_back(operation);
        }
    }

    PlenzoAlarmProtocol* agent = nullptr;

private:
    Journal& m_journal;
    std::vector<Operation> m_early;
    bool m_isClosed = false;
};

class FakeDistributedNotifications final : public DistributedNotifications {
public:
    explicit FakeDistributedNotifications(Journal& journal) : m_journal(journal) {}
    void post(std::string_view name) override { m_journal.push_back("post " + std::string(name)); }

private:
    Journal& m_journal;
};

class FakeStandardFolders final : public StandardFolders {
public:
    explicit FakeStandardFolders(Journal& journal) : m_journal(journal) {}
    [[nodiscard]] std::optional<std::string> applicationSupport() const override { return support; }
    [[nodiscard]] std::string temporary() const override { return "/tmp"; }
    bool createWithIntermediates(const std::string& path) override {
        m_journal.push_back("create " + path);
        return canCreate;
    }

    std::optional<std::string> support = "/home/ana/.local/share";
    bool canCreate = true;

private:
    Journal& m_journal;
};

/// Texts that are their keys.
class FakeLocalizedStrings final : public LocalizedStrings {
public:
    [[nodiscard]] std::string string(std::string_view key) const override {
        return std::string(key);
    }
};

/// Drops everything at once.
class FakeDisposal final : public Disposal {
public:
    void dispose(std::shared_ptr<void> unneeded) override { unneeded.reset(); }
};

class FakeRegionalSettings final : public RegionalSettings {
public:
    explicit FakeRegionalSettings(TimeZone zone) : m_zone(std::move(zone)) {}
    [[nodiscard]] TimeZone timeZone() const override { return m_zone; }
    [[nodiscard]] std::string locale() const override { return "en_US"; }
    void setTimeZone(TimeZone zone) { m_zone = std::move(zone); }

private:
    TimeZone m_zone;
};

} // namespace plenzo
