#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace sdbus {
class IConnection;
class IObject;
} // namespace sdbus

namespace plenzo {

/// The host on the session bus, as the desktop calls programs that open URLs (D-Bus activation of
/// the Desktop Entry Specification): the name org.plenzo.PlenzoHost and the interface
/// org.freedesktop.Application. The connection outlives it and is processed by somebody else.
class CommandService {
public:
    /// Is given a URL and the token that lets a program take the focus, which may be empty.
    using Received = std::function<void(const std::string& url, const std::string& token)>;

    CommandService(sdbus::IConnection& connection, Received received);
    ~CommandService();
    CommandService(const CommandService&) = delete;
    CommandService& operator=(const CommandService&) = delete;

    /// Takes the name. False when another host has it.
    bool takeName();

private:
    sdbus::IConnection& m_connection;
    Received m_received;
    std::unique_ptr<sdbus::IObject> m_object;
};

/// Hands the URLs to the host that has the name, which the bus starts if it can. False when there
/// is none.
bool sendToRunningHost(sdbus::IConnection& connection, const std::vector<std::string>& urls);

} // namespace plenzo
