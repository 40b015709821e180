#pragma once

#include "localization/autoresizing.h"
#include "ui/alarm/alarm_cell_layout.h"
#include "ui/alarm/alarm_row.h"
#include "ui/alarm/alarm_row_colors.h"

#include <QWidget>
#include <vector>

namespace plenzo {

class AlarmCheckBox;
class AlarmColorBar;
class AlarmInfoButton;
class AlarmSeparator;
class ElidedLabel;

/// The parts of a row that answer the mouse.
enum class AlarmCellPart { None, CheckBox, InfoButton };

/// One row of the alarm window, of which the list paints as many copies as it has rows. Its
/// interface file has the labels "title", "date" and "location" and, as far as the kind of row has
/// them, "colorBar", "checkBox", "infoButton" and "separator".
class AlarmCellView final : public QWidget {
public:
    using QWidget::QWidget;

    /// Finds its parts, once the interface file is loaded. False when a label is missing.
    bool awakeFromNib();
    /// The height that the interface file gives the cell.
    [[nodiscard]] int designedHeight() const { return m_designedFor.height; }

    /// Shows the row in these colours, at the cell's present size; the part under the mouse is
    /// highlighted.
    void showRow(const AlarmRow& row, const AlarmRowColors& colors, AlarmCellPart hotPart);
    /// What lies at a point of the cell, of the row that is shown.
    [[nodiscard]] AlarmCellPart partAt(const QPoint& point) const;
    [[nodiscard]] bool isTitleElided() const;
    [[nodiscard]] const ElidedLabel& dateField() const { return *m_date; }
    [[nodiscard]] const ElidedLabel& locationField() const { return *m_location; }

private:
    /// A part, as it was designed.
    struct Part {
        QWidget* view;
        Frame designed;
        AutoresizingMask mask;
    };

    [[nodiscard]] Part part(QWidget* view) const;
    [[nodiscard]] QRect frameAtPresentSize(const Part& part) const;
    void layOut(const AlarmRow& row);
    void place(const Part& part, const QRect& frame);
    void setColors(const AlarmRow& row, const AlarmRowColors& colors, AlarmCellPart hotPart);
    void setTextColor(ElidedLabel* label, const QColor& color);

    ElidedLabel* m_title = nullptr;
    ElidedLabel* m_date = nullptr;
    ElidedLabel* m_location = nullptr;
    AlarmCheckBox* m_checkBox = nullptr;
    AlarmInfoButton* m_infoButton = nullptr;
    AlarmColorBar* m_colorBar = nullptr;
    AlarmSeparator* m_separator = nullptr;
    FrameSize m_designedFor;
    /// What moves with the lines of text.
    std::vector<Part> m_movable;
    std::vector<Part> m_labels;
};

} // namespace plenzo
