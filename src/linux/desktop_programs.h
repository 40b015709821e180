#pragma once

#include <gio/gio.h>

#include <memory>
#include <optional>
#include <string>

// What starting programs by their desktop entries takes, on a thread of GLib's (glib_thread.h).
namespace plenzo {

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unreference>;

struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};

/// The session's bus, or null. GLib uses it for what it starts too; left to itself it would connect
/// each time, and end the whole program with the bus.
[[nodiscard]] Owned<GDBusConnection> sessionBusOfGLib();

/// The bus name of a program whose desktop entry says that it can be called; otherwise empty.
[[nodiscard]] std::string busNameOf(GAppInfo* program);

/// For a program that gets this token by which it comes forward, or none: then neither one that we
/// were started with.
[[nodiscard]] Owned<GAppLaunchContext> launchContext(const std::optional<std::string>& token);

} // namespace plenzo
