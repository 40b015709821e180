#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace plenzo {

/// A message bus of the test's own: a dbus-daemon that nobody else knows of, with the limits of a
/// session bus and none of the machine's services. It owns the daemon's process and a temporary
/// folder. The daemon dies with it, and also when the thread that made it ends without it.
class PrivateBus {
public:
    /// A bus that can start no service.
    PrivateBus() : PrivateBus(std::filesystem::path()) {}
    /// A bus that starts the services whose D-Bus service files are in the folder. They run in
    /// the environment of the test, with DBUS_SESSION_BUS_ADDRESS set to this bus.
    explicit PrivateBus(const std::filesystem::path& serviceFolder);
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    /// The address to connect to. Empty when the daemon could not be started.
    [[nodiscard]] const std::string& address() const { return m_address; }

    /// Ends the daemon at once, as when a session falls apart. A second call does nothing.
    void stop();

private:
    std::filesystem::path m_folder;
    std::string m_address;
    pid_t m_daemon = -1;
};

} // namespace plenzo
