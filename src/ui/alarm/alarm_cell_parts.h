#pragma once

#include <QColor>
#include <QWidget>

namespace plenzo {

/// What an event's row shows of its calendar.
class AlarmColorBar final : public QWidget {
public:
    using QWidget::QWidget;
    void setColor(const QColor& color) { m_color = color; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
};

/// The check box of a to-do's row, in its calendar's colour.
class AlarmCheckBox final : public QWidget {
public:
    using QWidget::QWidget;

    struct State {
        QColor color;
        bool done = false;
        bool enabled = true;
        bool isHot = false;
    };
    void setState(const State& state) { m_state = state; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    State m_state;
};

/// The "i" in a circle that brings the host forward with the event.
class AlarmInfoButton final : public QWidget {
public:
    using QWidget::QWidget;
    void setColor(const QColor& color) { m_color = color; }
    void setHot(bool isHot) { m_isHot = isHot; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
    bool m_isHot = false;
};

/// The line between two rows.
class AlarmSeparator final : public QWidget {
public:
    using QWidget::QWidget;
    void setColor(const QColor& color) { m_color = color; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
};

} // namespace plenzo
