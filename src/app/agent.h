#pragma once

namespace plenzo {

/// Runs the agent until it is asked to end or the session's bus goes away. Needs the application
/// object to exist. Gives the program's exit code: 0, or 1 with a message on standard error when
/// there is no session bus or an agent of this user already runs.
int runAgent();

} // namespace plenzo
