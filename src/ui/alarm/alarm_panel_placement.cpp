#include "ui/alarm/alarm_panel_placement.h"

#include "ui/controls/window_placement.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPropertyAnimation>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace plenzo {

namespace {

constexpr int growthMilliseconds = 150;
const Qt::WindowStates maximized = Qt::WindowMaximized | Qt::WindowFullScreen;

} // namespace

AlarmPanelPlacement::AlarmPanelPlacement(QWidget& panel)
    : m_panel(panel), m_growing(std::make_unique<QPropertyAnimation>(&panel, "geometry")) {
    m_growing->setDuration(growthMilliseconds);
    m_growing->setEasingCurve(QEasingCurve::OutCubic);
    followScreens();
}

AlarmPanelPlacement::~AlarmPanelPlacement() = default;

bool AlarmPanelPlacement::isVisible() const {
    return m_panel.isVisible() && !m_panel.isMinimized();
}

bool AlarmPanelPlacement::isMaximized() const {
    return (m_panel.windowState() & maximized) != 0;
}

// The objects that are connected here end with the animation, and so with this.
void AlarmPanelPlacement::followScreens() {
    QObject* context = m_growing.get();
    const auto follow = [this, context](QScreen* screen) {
        QObject::connect(screen, &QScreen::availableGeometryChanged, context,
                         [this] { keepOnScreen(); });
    };
    std::ranges::for_each(QGuiApplication::screens(), follow);
    QObject::connect(qApp, &QGuiApplication::screenAdded, context, follow);
    QObject::connect(qApp, &QGuiApplication::screenRemoved, context, [this] {
        if (isVisible()) {
            placeOnScreen();
        }
    });
}

void AlarmPanelPlacement::keepOnScreen() {
    if (isVisible() && !isMaximized()) {
        finishGrowing();
        m_panel.setGeometry(keptWithin(m_panel.geometry(), roomOn(*m_panel.screen())));
    }
}

/// A window that comes back has the size that it had before.
void AlarmPanelPlacement::leaveMaximized() {
    if (isMaximized()) {
        const QRect normal = m_panel.normalGeometry();
        m_panel.setWindowState(m_panel.windowState() & ~maximized);
        m_panel.setGeometry(normal);
    }
}

bool AlarmPanelPlacement::settle() {
    finishGrowing();
    if (!isVisible()) {
        leaveMaximized();
    }
    return !isMaximized();
}

void AlarmPanelPlacement::growBy(int height) {
    if (!isVisible()) {
        m_panel.resize(m_panel.width(), m_panel.height() + height);
        return;
    }
    QRect window = m_panel.geometry();
    window.setHeight(window.height() + height);
    m_growing->setStartValue(m_panel.geometry());
    m_growing->setEndValue(keptWithin(window, roomOn(*m_panel.screen())));
    m_growing->start();
}

void AlarmPanelPlacement::finishGrowing() {
    if (m_growing->state() == QAbstractAnimation::Running) {
        m_growing->setCurrentTime(m_growing->duration());
    }
}

void AlarmPanelPlacement::noteFrame() {
    if (m_panel.isVisible() && m_panel.windowHandle() != nullptr) {
        m_frame = m_panel.windowHandle()->frameMargins();
    }
}

QRect AlarmPanelPlacement::roomOn(const QScreen& screen) {
    noteFrame();
    return screen.availableGeometry().marginsRemoved(m_frame);
}

void AlarmPanelPlacement::placeOnScreen() {
    const QScreen* pointed = QGuiApplication::screenAt(QCursor::pos());
    const QScreen* screen = pointed != nullptr ? pointed : QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return;
    }
    const QRect window = m_panel.geometry();
    // Where the user has put it, as long as that is where the user is.
    const bool stays = m_isPlaced && screen->geometry().contains(window.center());
    m_panel.setGeometry(
        stays ? keptWithin(window, roomOn(*screen))
              : cornerPlacement(window.size(), roomOn(*screen), m_panel.layoutDirection()));
    m_isPlaced = true;
}

} // namespace plenzo
