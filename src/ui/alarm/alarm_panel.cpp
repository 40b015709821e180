#include "ui/alarm/alarm_panel.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <utility>

namespace plenzo {

namespace {

Qt::KeyboardModifier modifierOfKey(int key) {
    switch (key) {
    case Qt::Key_Shift:
        return Qt::ShiftModifier;
    case Qt::Key_Alt:
        return Qt::AltModifier;
    default:
        return Qt::NoModifier;
    }
}

/// The modifiers after the event; while a modifier goes down or up, the toolkit's are those before.
Qt::KeyboardModifiers modifiersAfter(const QKeyEvent& event) {
    Qt::KeyboardModifiers modifiers = event.modifiers();
    modifiers.setFlag(modifierOfKey(event.key()), event.type() == QEvent::KeyPress);
    return modifiers;
}

} // namespace

AlarmPanel::AlarmPanel(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint |
                          Qt::WindowTitleHint | Qt::CustomizeWindowHint) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
}

void AlarmPanel::watchKeysOfChildren() {
    for (QWidget* child : findChildren<QWidget*>()) {
        child->installEventFilter(this);
    }
}

void AlarmPanel::closeSilently() {
    m_closesSilently = true;
    close();
    m_closesSilently = false;
}

void AlarmPanel::closeEvent(QCloseEvent* event) {
    // A copy, as in all of these: what is done may end the handlers.
    const auto willClose = m_handlers.willClose;
    if (!m_closesSilently && willClose) {
        willClose();
    }
    event->accept();
}

std::function<void()> AlarmPanel::handlerFor(QEvent::Type type) const {
    switch (type) {
    case QEvent::WindowActivate:
        return m_handlers.didBecomeKey;
    case QEvent::WindowDeactivate:
        return m_handlers.didResignKey;
    case QEvent::ApplicationPaletteChange:
        return m_handlers.paletteChanged;
    default:
        return {};
    }
}

bool AlarmPanel::event(QEvent* event) {
    if (const auto handler = handlerFor(event->type())) {
        handler();
    }
    noteModifiers(*event);
    return QWidget::event(event);
}

bool AlarmPanel::eventFilter(QObject* watched, QEvent* event) {
    noteModifiers(*event);
    const bool isCommand =
        event->type() == QEvent::KeyPress &&
        static_cast<const QKeyEvent&>(*event).modifiers().testFlag(Qt::ControlModifier);
    const auto keyDown = m_handlers.keyDown;
    if (isCommand && keyDown && keyDown(static_cast<const QKeyEvent&>(*event))) {
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void AlarmPanel::noteModifiers(const QEvent& event) const {
    if (event.type() != QEvent::KeyPress && event.type() != QEvent::KeyRelease) {
        return;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    const auto flagsChanged = m_handlers.flagsChanged;
    if (modifierOfKey(key.key()) != Qt::NoModifier && flagsChanged) {
        const Qt::KeyboardModifiers modifiers = modifiersAfter(key);
        flagsChanged(modifiers.testFlag(Qt::AltModifier) || modifiers.testFlag(Qt::ShiftModifier));
    }
}

void AlarmPanel::keyPressEvent(QKeyEvent* event) {
    const auto keyDown = m_handlers.keyDown;
    if (!keyDown || !keyDown(*event)) {
        QWidget::keyPressEvent(event);
    }
}

} // namespace plenzo
