#pragma once

#include <string>

namespace plenzo {

/// The desktop's way of opening things with the programs that handle them.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Hands the URL to its scheme's default program, which comes forward. Without one nothing
    /// happens.
    virtual void openURL(const std::string& url) = 0;
    /// Hands the file at this absolute path to the default program of its kind, likewise.
    virtual void openFile(const std::string& path) = 0;
    /// As openURL, but the program stays where it is.
    virtual void openURLWithoutActivation(const std::string& url) = 0;
};

} // namespace plenzo
