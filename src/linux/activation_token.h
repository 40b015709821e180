#pragma once

#include <optional>
#include <string>

namespace plenzo {

/// A token that the desktop gave us for what the user just did, such as a click on a notification.
/// As long as this object lives, the next newActivationToken() on this thread is that one.
class OfferedActivationToken {
public:
    /// An empty token, or one of absurd length, is none.
    explicit OfferedActivationToken(std::string token);
    OfferedActivationToken(const OfferedActivationToken&) = delete;
    OfferedActivationToken& operator=(const OfferedActivationToken&) = delete;
    ~OfferedActivationToken();
};

/// A new token by which a program that is started now may come forward: an identifier of the
/// startup notification protocol, whose "_TIME" tells the window manager when the user asked for
/// it. Nothing without an X display, unless the desktop has given us one. May be called from any
/// thread.
[[nodiscard]] std::optional<std::string> newActivationToken();

} // namespace plenzo
