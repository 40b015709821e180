#pragma once

#include <QEvent>
#include <QWidget>
#include <functional>

namespace plenzo {

/// The alarm window's frame: floats above other windows, and reports its keyboard, the modifier
/// keys and its end.
class AlarmPanel final : public QWidget {
public:
    explicit AlarmPanel(QWidget* parent = nullptr);

    struct Handlers {
        /// Whether Shift or Alt is held. Told with every key, and where the pointer is used.
        std::function<void(bool allModifierDown)> flagsChanged;
        std::function<void()> didBecomeKey;
        std::function<void()> didResignKey;
        /// The user closes the window.
        std::function<void()> willClose;
        /// The desktop's colours are others.
        std::function<void()> paletteChanged;
        /// A key that nothing in the window wants. Whether it was made use of.
        std::function<bool(const QKeyEvent& event)> keyDown;
    };
    void setHandlers(Handlers handlers) { m_handlers = std::move(handlers); }

    /// Whether a key comes again because it is held.
    [[nodiscard]] bool isRepeated(const QKeyEvent& press) const;

    /// Lets the panel see the keys of what is in it by now.
    void watchKeysOfChildren();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] std::function<void()> handlerFor(QEvent::Type type) const;
    void noteModifiers(const QEvent& event) const;
    void noteRelease(const QEvent& event);

    Handlers m_handlers;
    quint32 m_releasedScanCode = 0;
    quint64 m_releaseMilliseconds = 0; // by the toolkit's event clock
};

} // namespace plenzo
