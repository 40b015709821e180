#pragma once

#include "linux/main_loop.h"

#include <functional>

namespace plenzo {

/// Calls `requested` on the main loop when the program is asked to end (SIGTERM, SIGINT, SIGHUP).
/// One at a time in a process. While the handle lives the signals do nothing else; afterwards they
/// have their default effect again. Empty when the system refuses.
[[nodiscard]] Handle onTerminationRequest(MainLoop& loop, std::function<void()> requested);

} // namespace plenzo
