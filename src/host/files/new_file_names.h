#pragma once

#include <string>

namespace plenzo {

/// The path under which this process writes what is to take the place of a file: beside it, hidden,
/// and no .ics file, so that nobody takes it for a calendar. Other processes have others.
std::string pathOfNewFile(const std::string& path);

/// Removes what processes that have ended left under such names of theirs: a loss of power, say.
void removeForsakenFiles(const std::string& path);

} // namespace plenzo
