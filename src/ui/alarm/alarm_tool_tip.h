#pragma once

#include "ui/alarm/alarm_row.h"

#include <QString>

namespace plenzo {

/// What hovers over a row: its title where that is cut off, and its calendar, a line each, of long
/// texts the beginning. It is marked up so that the texts show as they are; empty without any.
[[nodiscard]] QString alarmToolTip(const AlarmRow& row, bool isTitleElided);

} // namespace plenzo
