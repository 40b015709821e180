#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// Something wrong in a file, for the person who keeps it.
struct FileProblem {
    int line = 0; // counted from 1; 0 is the file as a whole
    std::string text;
};

/// One whole component that stands directly in a calendar, from its BEGIN to its END.
struct ComponentBlock {
    std::string name; // in capitals: "VEVENT"
    std::string_view text;
    int line = 0;
};

/// The text of an iCalendar file cut into its components, so that a damaged one costs only itself.
/// The views point into the text that was cut.
struct ContentBlocks {
    bool hasCalendar = false;
    std::vector<std::string_view> properties; // the calendar's own lines, with their continuations
    std::vector<ComponentBlock> components;
    std::vector<FileProblem> problems;
};

/// The line at the position with the continuation lines that follow it (RFC 5545, 3.1) and their
/// ends. Moves the position behind them, and the number by as many lines.
std::string_view takeContentLine(std::string_view text, std::size_t& position, int& lineNumber);

/// Cuts in one pass. A component without its END, with nesting that does not match or is deeper
/// than 16, or with a NUL byte is left out and named among the problems.
ContentBlocks contentBlocksOf(std::string_view text);

} // namespace plenzo
