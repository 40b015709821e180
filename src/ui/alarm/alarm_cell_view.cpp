#include "ui/alarm/alarm_cell_view.h"

#include "localization/springs_and_struts.h"
#include "ui/alarm/alarm_cell_parts.h"
#include "ui/controls/colors.h"
#include "ui/controls/elided_label.h"

#include <cstddef>

namespace plenzo {

namespace {

constexpr double mutedFraction = 0.35;

/// Who wants as much gets all of it.
constexpr double highContrast = 20;
constexpr double separatorFraction = 0.88;

/// Clicks beside a small part still mean it.
constexpr int clickMargin = 6;

QColor calendarColor(const AlarmRow& row, const AlarmRowColors& colors) {
    constexpr double visibleContrast = 1.35;
    const QColor color = row.color ? toQColor(*row.color) : colors.text;
    return contrastRatio(color, colors.background) >= visibleContrast ? color : colors.text;
}

bool isHit(const QWidget* part, const QPoint& point) {
    return part != nullptr && part->geometry()
                                  .adjusted(-clickMargin, -clickMargin, clickMargin, clickMargin)
                                  .contains(point);
}

template <typename Child>
Child* child(const QWidget& cell, const char* name) {
    return dynamic_cast<Child*>(cell.findChild<QWidget*>(name));
}

} // namespace

bool AlarmCellView::awakeFromNib() {
    m_title = child<ElidedLabel>(*this, "title");
    m_date = child<ElidedLabel>(*this, "date");
    m_location = child<ElidedLabel>(*this, "location");
    m_checkBox = child<AlarmCheckBox>(*this, "checkBox");
    m_infoButton = child<AlarmInfoButton>(*this, "infoButton");
    m_colorBar = child<AlarmColorBar>(*this, "colorBar");
    m_separator = child<AlarmSeparator>(*this, "separator");
    if (m_title == nullptr || m_date == nullptr || m_location == nullptr) {
        return false;
    }
    m_designedFor = {width(), height()};
    m_labels = {part(m_title), part(m_date), part(m_location)};
    for (QWidget* view : {static_cast<QWidget*>(m_checkBox), static_cast<QWidget*>(m_infoButton)}) {
        if (view != nullptr) {
            m_movable.push_back(part(view));
        }
    }
    return true;
}

AlarmCellView::Part AlarmCellView::part(QWidget* view) const {
    const SpringsAndStruts* layout = SpringsAndStruts::of(this);
    const QRect frame = layout != nullptr ? layout->frame(view) : view->geometry();
    return {.view = view,
            .designed = {frame.x(), frame.y(), frame.width(), frame.height()},
            .mask = layout != nullptr ? layout->mask(view) : AutoresizingMask()};
}

QRect AlarmCellView::frameAtPresentSize(const Part& part) const {
    const Frame frame = autoresized(part.designed, m_designedFor, {width(), height()}, part.mask);
    return {frame.x, frame.y, frame.width, frame.height};
}

void AlarmCellView::place(const Part& part, const QRect& frame) {
    if (SpringsAndStruts* layout = SpringsAndStruts::of(this)) {
        layout->setFrame(part.view, frame);
    } else {
        part.view->setGeometry(frame);
    }
}

void AlarmCellView::layOut(const AlarmRow& row) {
    if (SpringsAndStruts* layout = SpringsAndStruts::of(this)) {
        layout->layOut();
    }
    AlarmCellFrames designed{.title = frameAtPresentSize(m_labels[0]),
                             .date = frameAtPresentSize(m_labels[1]),
                             .location = frameAtPresentSize(m_labels[2]),
                             .others = {}};
    for (const Part& movable : m_movable) {
        designed.others.push_back(frameAtPresentSize(movable));
    }
    const AlarmCellFrames frames = laidOutCell(designed, m_date->textWidth(), row.location.empty());
    place(m_labels[0], frames.title);
    place(m_labels[1], frames.date);
    place(m_labels[2], frames.location);
    for (std::size_t index = 0; index < m_movable.size(); ++index) {
        place(m_movable[index], frames.others[index]);
    }
    m_location->setVisible(!row.location.empty());
}

void AlarmCellView::showRow(const AlarmRow& row, const AlarmRowColors& colors,
                            AlarmCellPart hotPart) {
    m_title->setLine(QString::fromStdString(row.title));
    m_date->setLine(QString::fromStdString(row.date));
    m_location->setLine(QString::fromStdString(row.location));
    setColors(row, colors, hotPart);
    layOut(row);
}

void AlarmCellView::setTextColor(ElidedLabel* label, const QColor& color) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
}

void AlarmCellView::setColors(const AlarmRow& row, const AlarmRowColors& colors,
                              AlarmCellPart hotPart) {
    const bool wantsContrast = contrastRatio(colors.text, colors.background) > highContrast;
    const QColor muted =
        mutedText(colors.text, colors.background, wantsContrast ? 0 : mutedFraction);
    setTextColor(m_title, colors.text);
    setTextColor(m_date, muted);
    setTextColor(m_location, muted);
    const QColor calendar = calendarColor(row, colors);
    if (m_colorBar != nullptr) {
        m_colorBar->setColor(calendar);
    }
    if (m_checkBox != nullptr) {
        m_checkBox->setState({.color = calendar,
                              .done = row.done,
                              .enabled = !row.readOnly,
                              .isHot = hotPart == AlarmCellPart::CheckBox});
    }
    if (m_infoButton != nullptr) {
        const bool isHot = hotPart == AlarmCellPart::InfoButton;
        m_infoButton->setColor(isHot ? colors.text : muted);
        m_infoButton->setHot(isHot);
    }
    if (m_separator != nullptr) {
        m_separator->setColor(blended(colors.text, colors.background, separatorFraction));
        m_separator->setVisible(!row.lastRow);
    }
}

AlarmCellPart AlarmCellView::partAt(const QPoint& point) const {
    if (isHit(m_checkBox, point)) {
        return AlarmCellPart::CheckBox;
    }
    return isHit(m_infoButton, point) ? AlarmCellPart::InfoButton : AlarmCellPart::None;
}

bool AlarmCellView::isTitleElided() const {
    return m_title->isElided();
}

} // namespace plenzo
