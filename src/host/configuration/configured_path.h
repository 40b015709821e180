#pragma once

#include "host/configuration/configuration.h"

#include <string>

namespace plenzo {

/// A path as the configuration means it, or why it means none.
struct ConfiguredPath {
    std::string path;
    std::string error; // empty when there is a path
};

/// What is no path of a file or folder, but looks like something else that people write for one, is
/// an error: a URL, another user's home folder, a variable.
ConfiguredPath pathFromText(const std::string& text, const PathOrigin& origin);

} // namespace plenzo
