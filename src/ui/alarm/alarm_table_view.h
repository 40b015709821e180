#pragma once

#include "ui/alarm/alarm_list_model.h"
#include "ui/alarm/alarm_list_view.h"
#include "ui/alarm/alarm_panel_keys.h"

#include <QListView>
#include <functional>

namespace plenzo {

/// The list of the alarm window. Its keys go to a handler first; a click on a part of a row that
/// answers clicks leaves the selection alone.
class AlarmTableView final : public QListView, public AlarmListView {
public:
    explicit AlarmTableView(QWidget* parent = nullptr);

    /// Says whether it has made use of the key.
    void setKeyHandler(std::function<bool(const QKeyEvent& event)> handler) {
        m_keyHandler = std::move(handler);
    }

    [[nodiscard]] const AlarmListModel& alarms() const { return m_model; }
    [[nodiscard]] int rowHeight() const;

    void appendRow(const AlarmRow& row) override { m_model.appendRow(row); }
    void removeRows(const std::vector<std::size_t>& rows) override { m_model.removeAlarms(rows); }
    void updateRow(std::size_t index, const AlarmRow& row) override {
        m_model.updateRow(index, row);
    }
    [[nodiscard]] std::vector<std::size_t> selectedRows() const override;
    void selectRow(std::size_t row) override;
    void selectAllRows() override;
    void scrollToRow(std::size_t row) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// Typing does not look for titles: digits are the snooze amount.
    void keyboardSearch(const QString& /*search*/) override {}
    [[nodiscard]] QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] bool answersClicks(const QPoint& position) const;

    AlarmListModel m_model;
    std::function<bool(const QKeyEvent& event)> m_keyHandler;
};

} // namespace plenzo
