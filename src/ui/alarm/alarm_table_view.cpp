#include "ui/alarm/alarm_table_view.h"

#include "ui/alarm/alarm_row_delegate.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

namespace plenzo {

AlarmTableView::AlarmTableView(QWidget* parent) : QListView(parent) {
    setModel(&m_model);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformItemSizes(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setMouseTracking(true);
}

int AlarmTableView::rowHeight() const {
    return itemDelegate()->sizeHint({}, {}).height();
}

std::vector<std::size_t> AlarmTableView::selectedRows() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
        rows.push_back(static_cast<std::size_t>(index.row()));
    }
    std::ranges::sort(rows);
    return rows;
}

void AlarmTableView::selectRow(std::size_t row) {
    selectionModel()->setCurrentIndex(m_model.index(static_cast<int>(row)),
                                      QItemSelectionModel::ClearAndSelect);
}

void AlarmTableView::selectAllRows() {
    selectAll();
}

void AlarmTableView::scrollToRow(std::size_t row) {
    scrollTo(m_model.index(static_cast<int>(row)));
}

void AlarmTableView::keyPressEvent(QKeyEvent* event) {
    // A copy, because what the key does may end the window.
    const auto handler = m_keyHandler;
    if (handler && handler(*event)) {
        event->accept();
        return;
    }
    QListView::keyPressEvent(event);
}

bool AlarmTableView::answersClicks(const QPoint& position) const {
    const QModelIndex index = indexAt(position);
    const auto* rows = dynamic_cast<const AlarmRowDelegate*>(itemDelegate());
    if (!index.isValid() || rows == nullptr) {
        return false;
    }
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    return rows->partAt(option, index, position - option.rect.topLeft()) != AlarmCellPart::None;
}

QItemSelectionModel::SelectionFlags AlarmTableView::selectionCommand(const QModelIndex& index,
                                                                     const QEvent* event) const {
    const auto* mouse = dynamic_cast<const QMouseEvent*>(event);
    if (mouse != nullptr && mouse->button() == Qt::LeftButton && answersClicks(mouse->pos())) {
        return QItemSelectionModel::NoUpdate;
    }
    return QListView::selectionCommand(index, event);
}

void AlarmTableView::mouseMoveEvent(QMouseEvent* event) {
    QListView::mouseMoveEvent(event);
    viewport()->update();
}

void AlarmTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    // The first click on a check box takes its row away: the second would meet the next one.
    if (event->button() == Qt::LeftButton && !answersClicks(event->pos())) {
        QListView::mouseDoubleClickEvent(event);
    }
}

} // namespace plenzo
