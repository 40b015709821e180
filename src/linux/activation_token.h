#pragma once

#include <optional>
#include <string>

namespace plenzo {

/// A new token by which a program that is started now may come forward: an identifier of the
/// startup notification protocol, whose "_TIME" tells the window manager when the user asked for
/// it. Nothing without an X display. May be called from any thread.
[[nodiscard]] std::optional<std::string> newActivationToken();

} // namespace plenzo
