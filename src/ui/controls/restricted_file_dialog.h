#pragma once

#include "platform/open_panel.h"

#include <QFileDialog>

namespace plenzo {

/// The toolkit's file dialog, in which only what a request allows can be chosen; the rest is shown
/// so that the user sees where he is, but is disabled.
class RestrictedFileDialog final : public QFileDialog {
public:
    RestrictedFileDialog(const OpenPanelRequest& request, QWidget* parent);

    /// Empty when nothing was chosen.
    [[nodiscard]] QString chosenPath() const;

protected:
    void accept() override;

private:
    void restrictTo(const OpenPanelRequest& request);
    void selectWhatCanBeChosen(const OpenPanelRequest& request);
    void letWhatIsTypedCount();

    std::function<bool(const std::string& path)> m_shouldEnable;
};

} // namespace plenzo
