#pragma once

#include "platform/disposal.h"
#include "platform/distributed_notifications.h"
#include "platform/host_link.h"
#include "platform/localized_strings.h"
#include "platform/regional_settings.h"
#include "platform/standard_folders.h"
#include "platform/user_notification_center.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// What happened, across several fakes, in order: "post PlenzoAlarm Launched", "open link".
using Journal = std::vector<std::string>;

class FakeHostLink final : public HostLink {
public:
    explicit FakeHostLink(Journal& journal) : m_journal(journal) {}
    void open(PlenzoAlarmProtocol& exported) override {
        m_journal.emplace_back("open link");
        agent = &exported;
    }
    void close() override {
        m_journal.emplace_back("close link");
        agent = nullptr;
    }

    PlenzoAlarmProtocol* agent = nullptr;

private:
    Journal& m_journal;
};

class FakeDistributedNotifications final : public DistributedNotifications {
public:
    explicit FakeDistributedNotifications(Journal& journal) : m_journal(journal) {}
    void post(std::string_view name) override { m_journal.push_back("post " + std::string(name)); }

private:
    Journal& m_journal;
};

class FakeUserNotificationCenter final : public UserNotificationCenter {
public:
    explicit FakeUserNotificationCenter(Journal& journal) : m_journal(journal) {}
    void deliver(const UserNotification& notification) override {
        m_journal.push_back("deliver " + notification.title);
        delivered.push_back(notification);
    }
    void removeAllDelivered() override {
        m_journal.emplace_back("remove notifications");
        delivered.clear();
    }

    std::vector<UserNotification> delivered;

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
