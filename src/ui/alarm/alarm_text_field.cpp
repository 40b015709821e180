#include "ui/alarm/alarm_text_field.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QRegularExpressionValidator>

namespace plenzo {

namespace {

/// Keys that the field's own editing knows nothing of.
bool isForTheWindow(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return true;
    default:
        return event.modifiers().testFlag(Qt::ControlModifier);
    }
}

bool isText(const QKeyEvent& event) {
    return !event.modifiers().testFlag(Qt::ControlModifier) && !event.text().isEmpty() &&
           event.text().front().isPrint();
}

} // namespace

AlarmTextField::AlarmTextField(QWidget* parent) : QLineEdit(parent) {
    // For what comes in other ways: the context menu, the middle button, a drop.
    static const QRegularExpression digits("[0-9]{0,9}");
    setValidator(new QRegularExpressionValidator(digits, this));
    setInputMethodHints(Qt::ImhDigitsOnly);
}

bool AlarmTextField::isTypingBefore(const QString& number) const {
    const auto before = text().size() - number.size();
    return before > 0 && cursorPosition() <= before && text() == QString(before, '0') + number;
}

bool AlarmTextField::refuses(const QString& text) const {
    const auto handler = m_handlers.handleInsert;
    return handler && handler(text.toLower().toStdU32String());
}

void AlarmTextField::pasteIfAllowed() {
    const QString text = QGuiApplication::clipboard()->text().trimmed();
    if (!text.isEmpty() && !refuses(text)) {
        insert(text);
    }
}

void AlarmTextField::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        pasteIfAllowed();
        return;
    }
    // A copy, because what the key does may end the window.
    const auto handleKeyDown = m_handlers.handleKeyDown;
    if (isForTheWindow(*event) && handleKeyDown && handleKeyDown(*event)) {
        return;
    }
    if (isText(*event) && refuses(event->text())) {
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void AlarmTextField::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty() && refuses(event->commitString())) {
        return;
    }
    QLineEdit::inputMethodEvent(event);
}

} // namespace plenzo
