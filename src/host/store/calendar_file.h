#pragma once

#include "host/ical/calendar.h"
#include "host/store/calendar_amendments.h"

#include <string>
#include <vector>

namespace plenzo {

/// Reads the file, whatever it may be: what cannot be read, or is no calendar, has problems.
/// Without amendments, which may be null, its text counts as it is.
CalendarFilePointer readCalendarFile(const std::string& path, const CalendarAmendments* amendments);

/// The file as it is now: the known one as long as nobody wrote to it since it was read and
/// its amendments are the same.
CalendarFilePointer currentCalendarFile(const std::string& path, const CalendarFilePointer& known,
                                        const CalendarAmendments* amendments);

/// A file that is wanted, and what is known of it: null for nothing.
struct WantedFile {
    std::string path;
    CalendarFilePointer known;
};

/// Each of the files as it is now. Many are read on as many threads as the machine has processors,
/// at most four; all of them have ended when this returns.
std::vector<CalendarFilePointer> currentCalendarFiles(const std::vector<WantedFile>& wanted,
                                                      const CalendarAmendments* amendments);

} // namespace plenzo
