#pragma once

#include <optional>
#include <string>

namespace plenzo {

/// Where the user's data lives, as far as the agent needs to know.
class StandardFolders {
public:
    StandardFolders() = default;
    StandardFolders(const StandardFolders&) = delete;
    StandardFolders& operator=(const StandardFolders&) = delete;
    virtual ~StandardFolders() = default;

    /// The folder in which programs keep the user's data (XDG Base Directory: $XDG_DATA_HOME, or
    /// .local/share under the home folder). Nothing when the user has no home.
    [[nodiscard]] virtual std::optional<std::string> applicationSupport() const = 0;
    [[nodiscard]] virtual std::string temporary() const = 0;
    /// Makes the folder and those above it, readable by the user alone. False when it is not there
    /// afterwards.
    virtual bool createWithIntermediates(const std::string& path) = 0;
};

} // namespace plenzo
