#pragma once

#include <cstddef>
#include <string>

namespace plenzo {

/// What counts besides the text of calendar files.
class CalendarAmendments {
public:
    CalendarAmendments() = default;
    CalendarAmendments(const CalendarAmendments&) = delete;
    CalendarAmendments& operator=(const CalendarAmendments&) = delete;
    virtual ~CalendarAmendments() = default;

    /// What is to be read in place of the text of that file.
    [[nodiscard]] virtual std::string amended(const std::string& calendarFile,
                                              std::string text) const = 0;

    /// Another number whenever that would be another text.
    [[nodiscard]] virtual std::size_t version(const std::string& calendarFile) const = 0;
};

} // namespace plenzo
