#pragma once

#include "ui/alarm/alarm_panel_keys.h"

#include <QLineEdit>
#include <functional>
#include <string_view>

namespace plenzo {

/// The field of the snooze amount, a number of up to nine digits. What is typed or pasted into it
/// has to please a handler first.
class AlarmTextField final : public QLineEdit {
public:
    explicit AlarmTextField(QWidget* parent = nullptr);

    struct Handlers {
        /// Text in lower case; true refuses it.
        std::function<bool(std::u32string_view text)> handleInsert;
        /// Keys that are no text: true when they were made use of.
        std::function<bool(const QKeyEvent& event)> handleKeyDown;
    };
    void setHandlers(Handlers handlers) { m_handlers = std::move(handlers); }

    /// Whether the user has typed a 0 in front of that number, as of "05", and may go on there.
    [[nodiscard]] bool isTypingBefore(const QString& number) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    [[nodiscard]] bool refuses(const QString& text) const;
    void pasteIfAllowed();

    Handlers m_handlers;
};

} // namespace plenzo
