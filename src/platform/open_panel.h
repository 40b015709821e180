#pragma once

#include <functional>
#include <optional>
#include <string>

namespace plenzo {

enum class OpenPanelMode { File, Folder };

/// What the user is asked for, and what can be chosen.
struct OpenPanelRequest {
    std::string title;
    std::string message;
    /// The text of the button that accepts.
    std::string prompt;
    /// Only files can be chosen, or only folders.
    OpenPanelMode mode = OpenPanelMode::File;
    /// The folder that is shown at first.
    std::string directory;
    /// Without its dot; files of other types cannot be chosen. Empty allows every type.
    std::string allowedFileType;
    /// Whether the file or folder at this path can be chosen.
    std::function<bool(const std::string& path)> shouldEnable;
};

/// The dialog in which the user chooses one file or folder; hidden ones are not shown.
class OpenPanel {
public:
    OpenPanel() = default;
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    virtual ~OpenPanel() = default;

    /// Shows the dialog in front of all other programs' windows and serves the main loop until it
    /// is answered, so anything may happen meanwhile. Nothing when the user declined.
    virtual std::optional<std::string> runModal(const OpenPanelRequest& request) = 0;
};

} // namespace plenzo
