#pragma once

#include "ui/alarm/alarm_row.h"

#include <cstddef>
#include <vector>

namespace plenzo {

/// The list of the alarm window, as its controller sees it: shows copies of the rows it is told,
/// and keeps what the user has selected. Rows are counted from 0 at the top; lists of them ascend.
class AlarmListView {
public:
    AlarmListView() = default;
    AlarmListView(const AlarmListView&) = delete;
    AlarmListView& operator=(const AlarmListView&) = delete;
    virtual ~AlarmListView() = default;

    virtual void appendRow(const AlarmRow& row) = 0;
    /// What remains of the selection stays selected.
    virtual void removeRows(const std::vector<std::size_t>& rows) = 0;
    /// Shows other texts in a row that is there.
    virtual void updateRow(std::size_t index, const AlarmRow& row) = 0;

    [[nodiscard]] virtual std::vector<std::size_t> selectedRows() const = 0;
    /// In place of what was selected.
    virtual void selectRow(std::size_t row) = 0;
    virtual void selectAllRows() = 0;
    virtual void scrollToRow(std::size_t row) = 0;
};

} // namespace plenzo
