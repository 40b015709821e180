#pragma once

#include "ui/alarm/alarm_row.h"

#include <QAbstractListModel>
#include <cstddef>
#include <vector>

namespace plenzo {

/// The rows of the alarm window, as the toolkit's list wants them. What it gives screen readers of
/// a row is all that the row shows.
class AlarmListModel final : public QAbstractListModel {
public:
    void appendRow(const AlarmRow& row);
    /// Ascending; those that do not exist are left out.
    void removeAlarms(const std::vector<std::size_t>& rows);
    void updateRow(std::size_t index, const AlarmRow& row);
    /// The index has to be valid and of this model.
    [[nodiscard]] const AlarmRow& row(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<AlarmRow> m_rows;
};

} // namespace plenzo
