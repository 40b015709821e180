#pragma once

#include "core/alarm_window_controller.h"
#include "model/alarm.h"

#include <string_view>

namespace plenzo {

/// Whether the record, which is a newer one of the alarm's occurrence, has no more use for the
/// alarm: its reminder is gone, or was acknowledged after it was due.
[[nodiscard]] bool alarmIsCanceledByEventDict(const Alarm& alarm, const Dictionary& eventDict);

/// The rows of the alarm window, as far as what the host sends takes them away again. Without a
/// window there are none.
class ShownAlarms {
public:
    explicit ShownAlarms(AlarmWindowController* alarmWindow) : m_alarmWindow(alarmWindow) {}

    /// Removes every row of the occurrence.
    void removeAlarmsForUIDPlusDay(std::string_view eventUID);
    /// Removes the rows that the record cancels.
    void removeAlarmsForDeletedOrAckdRemindersInEventDict(const Dictionary& eventDict);

private:
    template <typename Predicate>
    void removeRowsIf(Predicate isToGo);

    AlarmWindowController* m_alarmWindow;
};

} // namespace plenzo
