#pragma once

#include "platform/standard_folders.h"

namespace plenzo {

/// The user's folders of the XDG Base Directory Specification, from the environment. Relative paths
/// in it are invalid and count as not set.
class XdgFolders final : public StandardFolders {
public:
    [[nodiscard]] std::optional<std::string> applicationSupport() const override;
    [[nodiscard]] std::string temporary() const override;
    bool createWithIntermediates(const std::string& path) override;

    /// $XDG_CONFIG_HOME, or .config under the home folder. Nothing when the user has no home.
    [[nodiscard]] static std::optional<std::string> configuration();
};

} // namespace plenzo
