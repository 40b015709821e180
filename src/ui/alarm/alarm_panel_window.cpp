#include "ui/alarm/alarm_panel_window.h"

#include "localization/springs_and_struts.h"
#include "propertylist/format_string.h"
#include "ui/alarm/alarm_cell_parts.h"
#include "ui/alarm/alarm_row_delegate.h"
#include "ui/alarm/alarm_table_view.h"
#include "ui/alarm/alarm_text_field.h"
#include "ui/alarm/snooze_popup.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/key_press.h"
#include "ui/controls/panel_style.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QStyle>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace plenzo {

namespace {

constexpr int fadeMilliseconds = 200;

/// Beside what the titles of the buttons need.
constexpr int buttonMargin = 10;

std::unique_ptr<AlarmCellView> loadCell(InterfaceFiles& files, const std::string& name) {
    std::unique_ptr<QWidget> widget = files.load(name);
    if (dynamic_cast<AlarmCellView*>(widget.get()) == nullptr) {
        return nullptr;
    }
    std::unique_ptr<AlarmCellView> cell(static_cast<AlarmCellView*>(widget.release()));
    return cell->awakeFromNib() ? std::move(cell) : nullptr;
}

/// Tells the style sheet.
void setIsDefault(QPushButton& button, bool isDefault) {
    button.setProperty("isDefault", isDefault);
    button.style()->unpolish(&button);
    button.style()->polish(&button);
}

void setFrame(QWidget& view, const QRect& frame) {
    if (SpringsAndStruts* layout = SpringsAndStruts::of(view.parentWidget())) {
        layout->setFrame(&view, frame);
    } else {
        view.setGeometry(frame);
    }
}

QRect frame(const QWidget& view) {
    const SpringsAndStruts* layout = SpringsAndStruts::of(view.parentWidget());
    return layout != nullptr ? layout->frame(&view) : view.geometry();
}

} // namespace

void registerAlarmWidgets(InterfaceFiles& interfaceFiles) {
    interfaceFiles.registerWidget<AlarmPanel>("AlarmPanel");
    interfaceFiles.registerWidget<AlarmTableView>("AlarmTableView");
    interfaceFiles.registerWidget<AlarmTextField>("AlarmTextField");
    interfaceFiles.registerWidget<SnoozePopup>("SnoozePopup");
    interfaceFiles.registerWidget<AlarmCellView>("AlarmCellView");
    interfaceFiles.registerWidget<AlarmColorBar>("AlarmColorBar");
    interfaceFiles.registerWidget<AlarmCheckBox>("AlarmCheckBox");
    interfaceFiles.registerWidget<AlarmInfoButton>("AlarmInfoButton");
    interfaceFiles.registerWidget<AlarmSeparator>("AlarmSeparator");
    interfaceFiles.registerWidget<ElidedLabel>("ElidedLabel");
}

std::unique_ptr<AlarmPanelWindow> AlarmPanelWindow::load(Collaborators collaborators) {
    registerAlarmWidgets(collaborators.interfaceFiles);
    std::unique_ptr<QWidget> widget = collaborators.interfaceFiles.load("AlarmWindow");
    if (dynamic_cast<AlarmPanel*>(widget.get()) == nullptr) {
        return nullptr;
    }
    std::unique_ptr<AlarmPanel> panel(static_cast<AlarmPanel*>(widget.release()));
    std::unique_ptr<AlarmPanelWindow> window(
        new AlarmPanelWindow(std::move(collaborators), std::move(panel)));
    return window->findParts() && window->loadRows() ? std::move(window) : nullptr;
}

AlarmPanelWindow::AlarmPanelWindow(Collaborators collaborators, std::unique_ptr<AlarmPanel> panel)
    : m_collaborators(std::move(collaborators)), m_panel(std::move(panel)),
      m_fade(std::make_unique<QPropertyAnimation>(m_panel.get(), "windowOpacity")),
      m_placement(*m_panel) {
    m_fade->setDuration(fadeMilliseconds);
}

AlarmPanelWindow::~AlarmPanelWindow() {
    m_panel->setHandlers({});
}

bool AlarmPanelWindow::findParts() {
    m_list = dynamic_cast<AlarmTableView*>(m_panel->findChild<QWidget*>("alarmTable"));
    m_snoozeTextField =
        dynamic_cast<AlarmTextField*>(m_panel->findChild<QWidget*>("snoozeTextField"));
    m_snoozePopup = dynamic_cast<SnoozePopup*>(m_panel->findChild<QWidget*>("snoozePopup"));
    m_snoozeButton = m_panel->findChild<QPushButton*>("snoozeButton");
    m_dismissButton = m_panel->findChild<QPushButton*>("dismissButton");
    return m_list != nullptr && m_snoozeTextField != nullptr && m_snoozePopup != nullptr &&
           m_snoozeButton != nullptr && m_dismissButton != nullptr &&
           m_snoozePopup->count() == snoozeUnitsCount;
}

bool AlarmPanelWindow::loadRows() {
    AlarmRowDelegate::Cells cells{.event =
                                      loadCell(m_collaborators.interfaceFiles, "EventCellView"),
                                  .task = loadCell(m_collaborators.interfaceFiles, "TaskCellView")};
    if (!cells.event || !cells.task) {
        return false;
    }
    auto* rows = new AlarmRowDelegate(m_list->alarms(), std::move(cells));
    rows->setParent(m_list);
    m_list->setItemDelegate(rows);
    m_snoozePopup->awakeFromNib();
    m_panel->watchKeysOfChildren();
    updateStyle();
    widenForLongestTexts();
    return true;
}

void AlarmPanelWindow::widenForLongestTexts() {
    int popupWidth = 0;
    for (int index = 0; index < m_snoozePopup->count(); ++index) {
        m_snoozePopup->setCurrentIndex(index);
        popupWidth = std::max(popupWidth, m_snoozePopup->widthOfSelectedItem());
    }
    m_snoozePopup->setCurrentIndex(0);
    setButtonTitles(ButtonScope::All);
    const int gap = frame(*m_snoozePopup).left() - frame(*m_snoozeTextField).right();
    const int room = frame(*m_snoozeButton).left() - frame(*m_snoozePopup).left() - gap;
    const int width = m_panel->width() + std::max(0, popupWidth - room);
    setButtonTitles(ButtonScope::Selection);
    m_panel->setMinimumWidth(std::max(m_panel->minimumWidth(), width));
    m_panel->resize(width, m_panel->height());
}

void AlarmPanelWindow::connect(AlarmPanelController& controller, AlarmPanelKeys& keys) {
    keys.setUnitLetters(m_snoozePopup->unitLetters());
    connectPanel(controller, keys);
    connectList(controller, keys);
    connectSnoozeControls(controller, keys);
}

void AlarmPanelWindow::connectPanel(AlarmPanelController& controller, AlarmPanelKeys& keys) {
    m_panel->setHandlers(
        {.flagsChanged = [&controller](bool down) { controller.setAllModifierDown(down); },
         .didBecomeKey = [this, &controller] { becomeKey(controller); },
         .didResignKey =
             [this, &controller] {
                 controller.windowDidResignKey();
                 if (QWidget* focused = m_panel->focusWidget()) {
                     focused->clearFocus();
                 }
             },
         .willClose =
             [this, &controller] {
                 m_placement.noteFrame();
                 controller.windowWillClose();
             },
         .paletteChanged = [this] { updateStyle(); },
         .keyDown = [this, &keys](
                        const QKeyEvent& event) { return keys.handleKeyDown(keyPressOf(event)); }});
    // A scroll bar that comes and goes while the window grows would push the texts about.
    QObject::connect(&m_placement.growing(), &QAbstractAnimation::stateChanged, m_list,
                     [this](QAbstractAnimation::State state) {
                         m_list->setVerticalScrollBarPolicy(state == QAbstractAnimation::Running
                                                                ? Qt::ScrollBarAlwaysOff
                                                                : Qt::ScrollBarAsNeeded);
                     });
}

void AlarmPanelWindow::connectList(AlarmPanelController& controller, AlarmPanelKeys& keys) {
    m_list->setKeyHandler([this, &keys](const QKeyEvent& event) {
        constexpr double millisecondsPerSecond = 1000;
        return keys.handleKeyInList(keyPressOf(event),
                                    static_cast<double>(event.timestamp()) / millisecondsPerSecond);
    });
    QObject::connect(m_list, &QAbstractItemView::doubleClicked, m_list,
                     [&controller] { controller.showSelectedEvent(); });
    // A button that is held acts on what was selected when it was pressed, or on nothing.
    QObject::connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, m_list,
                     [this] {
                         m_snoozeButton->setDown(false);
                         m_dismissButton->setDown(false);
                     });
    auto* rows = static_cast<AlarmRowDelegate*>(m_list->itemDelegate());
    rows->setActions(
        {.todoCheckbox =
             [this, &controller](int row) {
                 const AlarmRow& shown = m_list->alarms().row(m_list->alarms().index(row));
                 controller.todoCheckbox(static_cast<std::size_t>(row), !shown.done);
             },
         .showEvent =
             [&controller](int row) {
                 controller.showEvent(static_cast<std::size_t>(row), HostCommands::InfoPanel::Hide);
             }});
}

void AlarmPanelWindow::connectSnoozeControls(AlarmPanelController& controller,
                                             AlarmPanelKeys& keys) {
    m_snoozeTextField->setHandlers(
        {.handleInsert = [&keys](std::u32string_view text) { return keys.handleInsert(text); },
         .handleKeyDown =
             [this, &keys](const QKeyEvent& event) {
                 return keys.handleKeyDown(keyPressOf(event));
             }});
    QObject::connect(m_snoozeTextField, &QLineEdit::textEdited, m_panel.get(),
                     [&controller](const QString& text) {
                         bool isNumber = false;
                         const qlonglong value = text.toLongLong(&isNumber);
                         controller.setSnoozeValue(isNumber ? std::optional<std::int64_t>(value)
                                                            : std::nullopt);
                     });
    QObject::connect(m_snoozePopup, &QComboBox::activated, m_panel.get(), [&controller](int index) {
        controller.setSnoozeUnits(static_cast<SnoozeUnits>(index));
    });
    QObject::connect(m_snoozeButton, &QPushButton::clicked, m_panel.get(),
                     [&controller] { controller.snoozeButton(); });
    QObject::connect(m_dismissButton, &QPushButton::clicked, m_panel.get(),
                     [&controller] { controller.dismissButton(); });
}

KeyPress AlarmPanelWindow::keyPressOf(const QKeyEvent& event) const {
    return {.character = firstCharacterOfEvent(event),
            .command = event.modifiers().testFlag(Qt::ControlModifier),
            .isRepeated = m_panel->isRepeated(event)};
}

void AlarmPanelWindow::becomeKey(AlarmPanelController& controller) {
    controller.windowDidBecomeKey();
    // A key that was pressed while another window had the keyboard.
    controller.setAllModifierDown(
        (QGuiApplication::queryKeyboardModifiers() & (Qt::ShiftModifier | Qt::AltModifier)) != 0);
    m_snoozeTextField->setFocus();
    m_snoozeTextField->selectAll();
}

void AlarmPanelWindow::updateStyle() {
    const QString sheet = panelStyleSheet(QGuiApplication::palette(),
                                          QString::fromStdString(m_collaborators.iconFolder),
                                          m_panel->layoutDirection());
    if (m_panel->styleSheet() != sheet) {
        m_panel->setStyleSheet(sheet);
    }
}

void AlarmPanelWindow::sizeToRows(std::size_t count) {
    if (!m_placement.settle()) {
        return;
    }
    const int wanted = static_cast<int>(count) * m_list->rowHeight();
    const int difference = wanted - frame(*m_list).height();
    if (difference != 0) {
        m_placement.growBy(difference);
    }
}

void AlarmPanelWindow::tellWindowManager() {
    if (m_collaborators.prepareWindow) {
        m_collaborators.prepareWindow(*m_panel->windowHandle());
    }
}

void AlarmPanelWindow::show() {
    m_placement.noteFrame();
    // Window managers give the keyboard to a minimized window that comes back, but not to a new
    // one.
    m_panel->hide();
    m_placement.placeOnScreen();
    m_panel->winId();
    tellWindowManager();
    m_panel->setWindowOpacity(0);
    m_panel->setWindowState(Qt::WindowNoState);
    m_panel->show();
    tellWindowManager();
    m_fade->setStartValue(0.0);
    m_fade->setEndValue(1.0);
    m_fade->start();
}

/// A menu of something in the window would stay alone on the screen.
void AlarmPanelWindow::closeMenu() {
    QWidget* menu = QApplication::activePopupWidget();
    const QObject* owner = menu;
    while (owner != nullptr && owner != m_panel.get()) {
        owner = owner->parent();
    }
    if (owner != nullptr) {
        menu->close();
    }
}

void AlarmPanelWindow::close() {
    m_fade->stop();
    m_placement.noteFrame();
    closeMenu();
    m_panel->close();
}

void AlarmPanelWindow::takeFocus() {
    m_panel->raise();
    if (m_collaborators.activate && m_panel->windowHandle() != nullptr) {
        m_collaborators.activate(*m_panel->windowHandle());
    } else {
        m_panel->activateWindow();
    }
}

void AlarmPanelWindow::setSnoozeAmount(const SnoozeAmount& amount) {
    const QString number = QString::number(amount.value);
    if (m_snoozeTextField->text() != number && !m_snoozeTextField->isTypingBefore(number)) {
        m_snoozeTextField->setText(number);
        if (amount.value == 0) {
            m_snoozeTextField->selectAll();
        }
    }
    m_snoozePopup->setCurrentIndex(static_cast<int>(amount.units));
    sizePopupToFit();
}

void AlarmPanelWindow::sizePopupToFit() {
    constexpr const char* tagProperty = "tag";
    QRect popup = frame(*m_snoozePopup);
    const int growth = m_snoozePopup->widthOfSelectedItem() - popup.width();
    const bool keepsRightEdge = m_snoozePopup->property(tagProperty).toInt() < 0;
    popup.adjust(keepsRightEdge ? -growth : 0, 0, keepsRightEdge ? 0 : growth, 0);
    setFrame(*m_snoozePopup, popup);
}

QString AlarmPanelWindow::text(const std::string& key) const {
    const std::string text = m_collaborators.strings.string(key);
    return QString::fromStdString(text.empty() ? key : text);
}

QString AlarmPanelWindow::toolTip(const QPushButton& button, const std::string& key) const {
    const std::string format = m_collaborators.strings.string(key);
    return QString::fromStdString(filledFormat(format, {button.text().toStdString()}));
}

void AlarmPanelWindow::setButtonTitles(ButtonScope scope) {
    const bool all = scope == ButtonScope::All;
    m_snoozeButton->setText(text(all ? "Snooze All" : "Snooze"));
    m_dismissButton->setText(text(all ? "Dismiss All" : "Dismiss"));
    sizeButtonsToFit();
    m_snoozeButton->setToolTip(toolTip(*m_snoozeButton, all ? "%@ (%C%CS)" : "%@ (%CS)"));
    m_dismissButton->setToolTip(toolTip(*m_dismissButton, all ? "%@ (%C%CD)" : "%@ (%CD)"));
}

void AlarmPanelWindow::sizeButtonsToFit() {
    const int width =
        std::max(m_snoozeButton->sizeHint().width(), m_dismissButton->sizeHint().width()) +
        buttonMargin;
    QRect dismiss = frame(*m_dismissButton);
    QRect snooze = frame(*m_snoozeButton);
    const int movement = width - dismiss.width();
    dismiss.setLeft(dismiss.left() - movement);
    snooze.translate(-movement, 0);
    snooze.setLeft(snooze.right() + 1 - width);
    setFrame(*m_dismissButton, dismiss);
    setFrame(*m_snoozeButton, snooze);
}

void AlarmPanelWindow::setDefaultButton(DefaultButton button) {
    setIsDefault(*m_snoozeButton, button == DefaultButton::Snooze);
    setIsDefault(*m_dismissButton, button == DefaultButton::Dismiss);
}

void AlarmPanelWindow::beep() {
    QApplication::beep();
}

} // namespace plenzo
