#pragma once

namespace plenzo {

/// Where the agent is on the session bus, for the agent itself and for those who call it.
namespace agentaddress {

inline constexpr const char* busName = "org.plenzo.PlenzoAlarm";
inline constexpr const char* objectPath = "/org/plenzo/PlenzoAlarm";
inline constexpr const char* protocolInterface = "org.plenzo.PlenzoAlarmProtocol";
inline constexpr const char* notificationsInterface = "org.plenzo.DistributedNotifications";
inline constexpr const char* inspectorInterface = "org.plenzo.PlenzoAlarm.Inspector";

} // namespace agentaddress

} // namespace plenzo
