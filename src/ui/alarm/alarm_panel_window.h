#pragma once

#include "localization/interface_files.h"
#include "platform/localized_strings.h"
#include "ui/alarm/alarm_panel.h"
#include "ui/alarm/alarm_panel_keys.h"
#include "ui/alarm/alarm_panel_placement.h"
#include "ui/alarm/alarm_panel_view.h"

#include <functional>
#include <memory>
#include <string>

class QPropertyAnimation;
class QPushButton;
class QWindow;

namespace plenzo {

class AlarmTableView;
class AlarmTextField;
class SnoozePopup;

/// The alarm window on the screen: shows what its controller says and forwards what the user does.
class AlarmPanelWindow final : public AlarmPanelView {
public:
    struct Collaborators {
        InterfaceFiles& interfaceFiles;
        const LocalizedStrings& strings;
        /// The folder of icons, with one folder for light and one for dark surroundings.
        std::string iconFolder;
        /// Does with the window, before it is shown and right afterwards, what the toolkit cannot:
        /// puts it on all workspaces. May be empty.
        std::function<void(QWindow& window)> prepareWindow;
        /// Gives the window the keyboard, whoever has it.
        std::function<void(QWindow& window)> activate;
    };

    /// Null when an interface file is missing or broken.
    static std::unique_ptr<AlarmPanelWindow> load(Collaborators collaborators);
    AlarmPanelWindow(const AlarmPanelWindow&) = delete;
    AlarmPanelWindow& operator=(const AlarmPanelWindow&) = delete;
    ~AlarmPanelWindow() override;

    [[nodiscard]] AlarmTableView& list() { return *m_list; }
    [[nodiscard]] QWidget& widget() { return *m_panel; }
    /// Who hears of the user's doings; both have to outlive the window.
    void connect(AlarmPanelController& controller, AlarmPanelKeys& keys);

    [[nodiscard]] bool isVisible() const override { return m_placement.isVisible(); }
    void sizeToRows(std::size_t count) override;
    void show() override;
    void close() override;
    void takeFocus() override;
    void setSnoozeAmount(const SnoozeAmount& amount) override;
    void setButtonTitles(ButtonScope scope) override;
    void setDefaultButton(DefaultButton button) override;
    void beep() override;

private:
    AlarmPanelWindow(Collaborators collaborators, std::unique_ptr<AlarmPanel> panel);

    bool findParts();
    bool loadRows();
    void connectPanel(AlarmPanelController& controller, AlarmPanelKeys& keys);
    void connectList(AlarmPanelController& controller, AlarmPanelKeys& keys);
    void connectSnoozeControls(AlarmPanelController& controller, AlarmPanelKeys& keys);
    void updateStyle();
    void closeMenu();
    void tellWindowManager();
    [[nodiscard]] KeyPress keyPressOf(const QKeyEvent& event) const;
    void becomeKey(AlarmPanelController& controller);
    [[nodiscard]] QString text(const std::string& key) const;
    [[nodiscard]] QString toolTip(const QPushButton& button, const std::string& key) const;
    void sizeButtonsToFit();
    void widenForLongestTexts();
    void sizePopupToFit();

    Collaborators m_collaborators;
    std::unique_ptr<AlarmPanel> m_panel;
    AlarmTableView* m_list = nullptr;
    AlarmTextField* m_snoozeTextField = nullptr;
    SnoozePopup* m_snoozePopup = nullptr;
    QPushButton* m_snoozeButton = nullptr;
    QPushButton* m_dismissButton = nullptr;
    std::unique_ptr<QPropertyAnimation> m_fade;
    AlarmPanelPlacement m_placement;
};

/// Makes the classes of the alarm window's interface files known to the loader.
void registerAlarmWidgets(InterfaceFiles& interfaceFiles);

} // namespace plenzo
