#include "ui/alarm/alarm_row_delegate.h"

#include "ui/alarm/alarm_list_model.h"
#include "ui/alarm/alarm_row_colors.h"
#include "ui/alarm/alarm_tool_tip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace plenzo {

namespace {

/// Where the keyboard is, while what it is on is not selected.
void drawFocus(QPainter& painter, const QStyleOptionViewItem& option) {
    if (!option.state.testFlag(QStyle::State_HasFocus) ||
        option.state.testFlag(QStyle::State_Selected)) {
        return;
    }
    constexpr int inset = 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(option.palette.color(QPalette::Highlight), inset));
    painter.drawRoundedRect(
        QRectF(QPointF(), option.rect.size()).adjusted(inset, inset, -inset, -inset), 4, 4);
}

RowState rowState(const QStyleOptionViewItem& option) {
    if (!option.state.testFlag(QStyle::State_Selected)) {
        return RowState::Normal;
    }
    return option.state.testFlag(QStyle::State_Active) ? RowState::Selected
                                                       : RowState::SelectedInactive;
}

} // namespace

AlarmRowDelegate::AlarmRowDelegate(const AlarmListModel& model, Cells cells)
    : m_model(model), m_cells(std::move(cells)) {}

AlarmCellView& AlarmRowDelegate::shownCell(const QStyleOptionViewItem& option,
                                           const QModelIndex& index) const {
    const AlarmRow& row = m_model.row(index);
    AlarmCellView& cell = row.isToDo ? *m_cells.task : *m_cells.event;
    cell.setLayoutDirection(option.direction);
    cell.resize(option.rect.size());
    const bool isHot = m_hotIndex == index && option.state.testFlag(QStyle::State_MouseOver);
    cell.showRow(row, alarmRowColors(row, rowState(option), option.palette),
                 isHot ? m_hotPart : AlarmCellPart::None);
    return cell;
}

void AlarmRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const AlarmRow& row = m_model.row(index);
    painter->fillRect(option.rect,
                      alarmRowColors(row, rowState(option), option.palette).background);
    painter->save();
    painter->translate(option.rect.topLeft());
    shownCell(option, index)
        .render(painter, QPoint(), QRegion(), QWidget::RenderFlags(QWidget::DrawChildren));
    drawFocus(*painter, option);
    painter->restore();
}

QSize AlarmRowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                                 const QModelIndex& /*index*/) const {
    return {0, m_cells.event->designedHeight()};
}

AlarmCellPart AlarmRowDelegate::partAt(const QStyleOptionViewItem& option, const QModelIndex& index,
                                       const QPoint& point) const {
    return shownCell(option, index).partAt(point);
}

void AlarmRowDelegate::perform(AlarmCellPart part, int row) const {
    // A copy, because the action may take the row away.
    const Actions actions = m_actions;
    if (part == AlarmCellPart::CheckBox && actions.todoCheckbox) {
        actions.todoCheckbox(row);
    } else if (part == AlarmCellPart::InfoButton && actions.showEvent) {
        actions.showEvent(row);
    }
}

bool AlarmRowDelegate::editorEvent(QEvent* event, QAbstractItemModel* /*model*/,
                                   const QStyleOptionViewItem& option, const QModelIndex& index) {
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        break;
    default:
        return false;
    }
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    const AlarmCellPart part = partAt(option, index, mouse.pos() - option.rect.topLeft());
    m_hotIndex = index;
    m_hotPart = part;
    if (mouse.button() != Qt::LeftButton) {
        return false;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const bool isClick = part == m_pressedPart && m_pressedIndex == index;
        m_pressedPart = AlarmCellPart::None;
        if (isClick) {
            perform(part, index.row());
        }
    } else {
        m_pressedPart = part;
        m_pressedIndex = index;
    }
    return part != AlarmCellPart::None;
}

bool AlarmRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const bool isTitleElided = shownCell(option, index).isTitleElided();
    QToolTip::showText(event->globalPos(), alarmToolTip(m_model.row(index), isTitleElided), view);
    return true;
}

} // namespace plenzo
