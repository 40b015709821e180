#pragma once

#include <sdbus-c++/Message.h>
#include <systemd/sd-bus.h>

namespace plenzo {

/// The message as the C library beneath sdbus-c++ knows it, borrowed. The C++ class has no way to
/// learn a variant's type without two allocations, to read text in place, or to append bytes in one
/// go; the pointer is a protected member, reached as any class derived from it may. Reading and
/// appending through it moves the same cursor.
inline sd_bus_message* libraryMessage(sdbus::Message& message) {
    struct Access : sdbus::Message {
        static void* of(sdbus::Message& message) { return message.*(&Access::msg_); }
    };
    return static_cast<sd_bus_message*>(Access::of(message));
}

} // namespace plenzo
