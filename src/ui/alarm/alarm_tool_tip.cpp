#include "ui/alarm/alarm_tool_tip.h"

#include <QStringList>

namespace plenzo {

namespace {

/// More would cover the screen, and a megabyte would hold the main loop.
constexpr qsizetype greatestLength = 500;

void addLine(QStringList& lines, const std::string& text) {
    const QString line = QString::fromStdString(text).simplified();
    if (!line.isEmpty()) {
        lines.append(line.size() > greatestLength ? line.left(greatestLength) + "…" : line);
    }
}

} // namespace

QString alarmToolTip(const AlarmRow& row, bool isTitleElided) {
    QStringList lines;
    if (isTitleElided) {
        addLine(lines, row.title);
    }
    addLine(lines, row.calendar);
    return lines.isEmpty()
               ? QString()
               : "<p style='white-space: pre-wrap'>" + lines.join('\n').toHtmlEscaped() + "</p>";
}

} // namespace plenzo
