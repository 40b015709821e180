#pragma once

#include <QMargins>
#include <QRect>
#include <memory>

class QPropertyAnimation;
class QScreen;
class QWidget;

namespace plenzo {

/// Where the alarm window lies and how large it is: all of it on a screen, whatever becomes of the
/// screens. The window outlives it.
class AlarmPanelPlacement {
public:
    explicit AlarmPanelPlacement(QWidget& panel);
    AlarmPanelPlacement(const AlarmPanelPlacement&) = delete;
    AlarmPanelPlacement& operator=(const AlarmPanelPlacement&) = delete;
    ~AlarmPanelPlacement();

    /// On the screen, not minimized.
    [[nodiscard]] bool isVisible() const;

    /// Ends what goes on with its size. False when the user has maximized it, and has it as large
    /// as it is to be.
    [[nodiscard]] bool settle();
    /// So many device-independent pixels higher, or lower; the upper edge stays. A window that is
    /// seen moves there.
    void growBy(int height);
    [[nodiscard]] const QPropertyAnimation& growing() const { return *m_growing; }

    /// Before it is shown: where the user has put it, or in a corner of the screen where the user
    /// is.
    void placeOnScreen();
    /// What the window manager puts around the window is known while it is shown.
    void noteFrame();

private:
    void followScreens();
    void keepOnScreen();
    void finishGrowing();
    void leaveMaximized();
    [[nodiscard]] bool isMaximized() const;
    /// For the window within its frame.
    [[nodiscard]] QRect roomOn(const QScreen& screen);

    QWidget& m_panel;
    std::unique_ptr<QPropertyAnimation> m_growing;
    QMargins m_frame;
    bool m_isPlaced = false;
};

} // namespace plenzo
