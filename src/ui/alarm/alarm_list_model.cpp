#include "ui/alarm/alarm_list_model.h"

#include <QStringList>
#include <iterator>

namespace plenzo {

namespace {

/// Nobody listens to more, and a megabyte would hold the main loop.
constexpr qsizetype greatestLength = 500;

QString spokenText(const AlarmRow& row) {
    QStringList parts;
    for (const std::string* part : {&row.title, &row.date, &row.location, &row.calendar}) {
        if (!part->empty()) {
            parts.append(QString::fromStdString(*part).left(greatestLength));
        }
    }
    return parts.join(", ");
}

} // namespace

void AlarmListModel::appendRow(const AlarmRow& row) {
    const int index = rowCount();
    beginInsertRows({}, index, index);
    m_rows.push_back(row);
    endInsertRows();
}

void AlarmListModel::removeAlarms(const std::vector<std::size_t>& rows) {
    // From the last, each stretch of neighbours at once.
    for (auto end = rows.rbegin(); end != rows.rend();) {
        auto begin = end;
        while (std::next(begin) != rows.rend() && *std::next(begin) + 1 == *begin) {
            ++begin;
        }
        if (*end < m_rows.size()) {
            beginRemoveRows({}, static_cast<int>(*begin), static_cast<int>(*end));
            m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(*begin),
                         m_rows.begin() + static_cast<std::ptrdiff_t>(*end) + 1);
            endRemoveRows();
        }
        end = std::next(begin);
    }
}

void AlarmListModel::updateRow(std::size_t index, const AlarmRow& row) {
    if (index < m_rows.size()) {
        m_rows[index] = row;
        const QModelIndex changed = createIndex(static_cast<int>(index), 0);
        emit dataChanged(changed, changed);
    }
}

const AlarmRow& AlarmListModel::row(const QModelIndex& index) const {
    return m_rows.at(static_cast<std::size_t>(index.row()));
}

int AlarmListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant AlarmListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromStdString(row(index).title);
    case Qt::AccessibleTextRole:
        return spokenText(row(index));
    default:
        return {};
    }
}

} // namespace plenzo
