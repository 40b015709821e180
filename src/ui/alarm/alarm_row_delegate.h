#pragma once

#include "ui/alarm/alarm_cell_view.h"

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>
#include <functional>
#include <memory>

namespace plenzo {

class AlarmListModel;

/// Paints the rows of the alarm window with two cells, one for events and one for to-dos, and tells
/// what in them was clicked.
class AlarmRowDelegate final : public QStyledItemDelegate {
public:
    struct Cells {
        std::unique_ptr<AlarmCellView> event;
        std::unique_ptr<AlarmCellView> task;
    };

    struct Actions {
        /// The check box of a row was clicked.
        std::function<void(int row)> todoCheckbox;
        std::function<void(int row)> showEvent;
    };

    AlarmRowDelegate(const AlarmListModel& model, Cells cells);

    void setActions(Actions actions) { m_actions = std::move(actions); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// Of the interface file's cell.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    /// Whether the point of the row, which counts from its upper left corner, answers a click.
    [[nodiscard]] AlarmCellPart partAt(const QStyleOptionViewItem& option, const QModelIndex& index,
                                       const QPoint& point) const;

private:
    [[nodiscard]] AlarmCellView& shownCell(const QStyleOptionViewItem& option,
                                           const QModelIndex& index) const;
    void perform(AlarmCellPart part, int row) const;

    const AlarmListModel& m_model;
    Cells m_cells;
    Actions m_actions;
    QPersistentModelIndex m_hotIndex;
    AlarmCellPart m_hotPart = AlarmCellPart::None;
    QPersistentModelIndex m_pressedIndex;
    AlarmCellPart m_pressedPart = AlarmCellPart::None;
};

} // namespace plenzo
