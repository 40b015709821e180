#pragma once

#include "linux/main_loop.h"

#include <functional>

namespace plenzo {

/// Why the program is to end: somebody wants that (SIGTERM, SIGINT), or what it belongs to is gone,
/// as the user's session (SIGHUP).
enum class TerminationRequest { Quit, HangUp };

/// Calls `requested` on the main loop when the program is asked to end.
/// One at a time in a process. While the handle lives the signals do nothing else; afterwards they
/// have their default effect again. Empty when the system refuses.
[[nodiscard]] Handle onTerminationRequest(MainLoop& loop,
                                          std::function<void(TerminationRequest)> requested);

} // namespace plenzo
