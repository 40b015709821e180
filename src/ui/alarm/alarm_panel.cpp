#include "ui/alarm/alarm_panel.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <optional>
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
/// Nothing for an event that does not tell.
std::optional<Qt::KeyboardModifiers> modifiersAfter(const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        Qt::KeyboardModifiers modifiers = key.modifiers();
        return modifiers.setFlag(modifierOfKey(key.key()), event.type() == QEvent::KeyPress);
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::Enter:
        return static_cast<const QInputEvent&>(event).modifiers();
    default:
        return std::nullopt;
    }
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

void AlarmPanel::closeEvent(QCloseEvent* event) {
    // A copy, as in all of these: what is done may end the handlers.
    const auto willClose = m_handlers.willClose;
    // Only what the user does at the window comes from outside. At the end of the session the
    // toolkit closes it too, and nothing is to be dismissed by that.
    if (event->spontaneous() && willClose) {
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
    noteRelease(*event);
    const bool isCommand =
        event->type() == QEvent::KeyPress &&
        static_cast<const QKeyEvent&>(*event).modifiers().testFlag(Qt::ControlModifier);
    const auto keyDown = m_handlers.keyDown;
    if (isCommand && keyDown && keyDown(static_cast<const QKeyEvent&>(*event))) {
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void AlarmPanel::noteRelease(const QEvent& event) {
    if (event.type() == QEvent::KeyRelease) {
        const auto& release = static_cast<const QKeyEvent&>(event);
        m_releasedScanCode = release.nativeScanCode();
        m_releaseMilliseconds = release.timestamp();
    }
}

// X11 repeats a key by releases and presses in the same moment. The toolkit takes them for what
// they are only if it has received both when it looks at the first.
bool AlarmPanel::isRepeated(const QKeyEvent& press) const {
    constexpr quint64 shortestPauseMilliseconds = 3;
    const bool isReleasedKey =
        press.nativeScanCode() != 0 && press.nativeScanCode() == m_releasedScanCode;
    return press.isAutoRepeat() ||
           (isReleasedKey && press.timestamp() - m_releaseMilliseconds < shortestPauseMilliseconds);
}

void AlarmPanel::noteModifiers(const QEvent& event) const {
    const auto modifiers = modifiersAfter(event);
    const auto flagsChanged = m_handlers.flagsChanged;
    if (modifiers && flagsChanged) {
        flagsChanged((*modifiers & (Qt::AltModifier | Qt::ShiftModifier)) != 0);
    }
}

void AlarmPanel::keyPressEvent(QKeyEvent* event) {
    const auto keyDown = m_handlers.keyDown;
    if (!keyDown || !keyDown(*event)) {
        QWidget::keyPressEvent(event);
    }
}

} // namespace plenzo
