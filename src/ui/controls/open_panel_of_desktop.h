#pragma once

#include "platform/open_panel.h"

#include <functional>

class QWindow;

namespace plenzo {

/// Asks the user for a file or folder in a dialog on the screen.
class OpenPanelOfDesktop final : public OpenPanel {
public:
    /// `activate` gives a window the keyboard, whoever has it; may be empty.
    explicit OpenPanelOfDesktop(std::function<void(QWindow& window)> activate = {})
        : m_activate(std::move(activate)) {}

    std::optional<std::string> runModal(const OpenPanelRequest& request) override;

private:
    std::function<void(QWindow& window)> m_activate;
};

} // namespace plenzo
