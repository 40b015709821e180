#pragma once

#include "host/edits/edit_targets.h"

#include <string>
#include <string_view>

namespace plenzo {

/// Changes to an iCalendar text. Each gives the whole new text, in which nothing differs but what
/// the change names, or says why it cannot be; a text that is damaged anywhere is not changed,
/// unless the context tolerates that.

/// Acknowledges one alarm of one occurrence (RFC 9074, 6): ACKNOWLEDGED is `now`, or a second after
/// the alarm's moment when that is still to come.
///
/// The ACKNOWLEDGED of a recurring item means all moments up to it. It is put there, without a new
/// component, as long as nothing else falls silent by it: no later occurrence (the time is brought
/// forward to a second after the alarm's own moment where that helps), and no earlier one of which
/// the person may still want to hear, because it is not over (a to-do is when it was due) or its
/// moment is less than a day past. Otherwise the occurrence gets an override that carries the
/// property.
///
/// An acknowledged snooze alarm is taken away, and its original acknowledged.
EditResult acknowledgeAlarm(std::string_view text, const AlarmTarget& target,
                            const EditContext& context);

/// Snoozes an alarm (RFC 9074, 7): acknowledges it and puts an alarm at `until` beside it, in place
/// of an earlier one of the same alarm. Of a recurring item in an override for the occurrence,
/// unless the alarm is at a fixed time and so belongs to all of them.
EditResult snoozeAlarm(std::string_view text, const AlarmTarget& target, SystemSeconds until,
                       const EditContext& context);

enum class Completion { Done, Undone };

/// Completes a to-do: STATUS, COMPLETED and PERCENT-COMPLETE; or takes that back.
///
/// Of a recurring one the occurrence gets an override that keeps what was done and when. The series
/// then moves on: DTSTART and DUE become those of the next occurrence and COUNT is lowered, so that
/// programs that look at the series alone show what is to be done next. It stays where it is when
/// an earlier occurrence is still to be done (unless this one is overdue itself: then older ones
/// are given up, as nobody shows them), and whenever moving it would change a later occurrence.
EditResult completeToDo(std::string_view text, const OccurrenceTarget& target,
                        Completion completion, const EditContext& context);

/// Adds one VEVENT or VTODO, given as text with any line endings, at the end of the first calendar;
/// to an empty text with a calendar around it. Refused: a component without a UID or with one that
/// the text has.
EditResult addComponent(std::string_view text, std::string_view component);

/// Adds a VTIMEZONE in the same way, unless the calendar has one with its TZID.
EditResult addZone(std::string_view text, std::string_view zoneComponent);

/// Whether the text has an event or to-do with that UID.
bool holdsItem(std::string_view text, std::string_view uid);

} // namespace plenzo
