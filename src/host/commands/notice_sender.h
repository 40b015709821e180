#pragma once

#include "host/commands/user_messages.h"

#include <memory>

namespace sdbus {
class IConnection;
class IProxy;
} // namespace sdbus

namespace plenzo {

/// Shows notices with the desktop's notification server (org.freedesktop.Notifications). Where
/// there is none they are not shown.
class NoticeSender {
public:
    explicit NoticeSender(sdbus::IConnection& connection);
    ~NoticeSender();
    NoticeSender(const NoticeSender&) = delete;
    NoticeSender& operator=(const NoticeSender&) = delete;

    void send(const Notice& notice);

private:
    void deliver(const Notice& notice, bool hasMarkup);

    std::unique_ptr<sdbus::IProxy> m_server;
};

} // namespace plenzo
