#pragma once

namespace plenzo::loginmanager {

/// The manager object of the service org.freedesktop.login1 on the system's bus.
constexpr const char* name = "org.freedesktop.login1";
constexpr const char* path = "/org/freedesktop/login1";
constexpr const char* interface = "org.freedesktop.login1.Manager";

} // namespace plenzo::loginmanager
