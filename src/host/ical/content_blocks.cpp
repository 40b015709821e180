#include "host/ical/content_blocks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace plenzo {

namespace {

constexpr std::size_t deepestNesting = 16;

constexpr std::array<std::string_view, 7> standsInCalendar = {
    "VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY", "VTIMEZONE", "VAVAILABILITY", "VCALENDAR"};

char capital(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// What follows the keyword and a colon on this line, in capitals and without white space around
/// it.
std::optional<std::string> nameAfter(std::string_view keyword, std::string_view line) {
    if (line.size() <= keyword.size() || line[keyword.size()] != ':' ||
        !std::equal(keyword.begin(), keyword.end(), line.begin(),
                    [](char wanted, char found) { return wanted == capital(found); })) {
        return std::nullopt;
    }
    std::string name;
    for (const char character : line.substr(keyword.size() + 1)) {
        if (character != ' ' && character != '\t' && character != '\r' && character != '\n') {
            name += capital(character);
        }
    }
    return name;
}

/// Walks the lines and keeps the stack of open components.
class Cutter {
public:
    explicit Cutter(std::string_view text) : m_text(text) {}

    ContentBlocks cut() {
        while (m_position < m_text.size()) {
            takeLine();
        }
        if (!m_open.empty()) {
            abandon("the file ends before END:" + m_open.front());
        }
        return std::move(m_blocks);
    }

private:
    std::string_view nextContentLine() {
        m_firstLine = m_nextLine;
        return takeContentLine(m_text, m_position, m_nextLine);
    }

    void takeLine() {
        const std::size_t begin = m_position;
        const std::string_view line = nextContentLine();
        if (line.find('\0') != std::string_view::npos) {
            takeBadLine();
        } else if (const auto opened = nameAfter("BEGIN", line)) {
            takeBegin(*opened, begin);
        } else if (const auto closed = nameAfter("END", line)) {
            takeEnd(*closed);
        } else if (m_open.empty() && !m_isSkipping) {
            m_blocks.properties.push_back(line);
        }
    }

    void takeBadLine() {
        if (m_open.empty()) {
            m_blocks.problems.push_back({m_firstLine, "a line with a NUL byte is left out"});
        } else {
            abandon("a line holds a NUL byte");
        }
    }

    void takeBegin(const std::string& name, std::size_t begin) {
        const bool isOuter = std::find(standsInCalendar.begin(), standsInCalendar.end(), name) !=
                             standsInCalendar.end();
        if (isOuter && !m_open.empty()) {
            abandon("BEGIN:" + name + " before END:" + m_open.front());
        }
        if (name == "VCALENDAR") {
            m_blocks.hasCalendar = true;
            m_isSkipping = false;
        } else if (isOuter || (m_open.empty() && !m_isSkipping)) {
            m_isSkipping = false;
            m_open = {name};
            m_blockBegin = begin;
            m_blockLine = m_firstLine;
        } else if (m_open.size() >= deepestNesting) {
            abandon("components are nested too deeply");
        } else if (!m_open.empty()) {
            m_open.push_back(name);
        }
    }

    void takeEnd(const std::string& name) {
        if (m_open.empty()) {
            m_isSkipping = m_isSkipping && name != "VCALENDAR";
            return;
        }
        if (name != m_open.back()) {
            abandon("END:" + name + " before END:" + m_open.back());
            return;
        }
        m_open.pop_back();
        if (m_open.empty()) {
            m_blocks.components.push_back(
                {name, m_text.substr(m_blockBegin, m_position - m_blockBegin), m_blockLine});
        }
    }

    void abandon(const std::string& reason) {
        m_blocks.problems.push_back({m_blockLine, m_open.front() + " is left out: " + reason});
        m_open.clear();
        m_isSkipping = true;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
    int m_nextLine = 1;
    int m_firstLine = 1;
    std::vector<std::string> m_open;
    std::size_t m_blockBegin = 0;
    int m_blockLine = 0;
    bool m_isSkipping = false;
    ContentBlocks m_blocks;
};

} // namespace

std::string_view takeContentLine(std::string_view text, std::size_t& position, int& lineNumber) {
    const std::size_t begin = position;
    do {
        const std::size_t newline = text.find('\n', position);
        position = newline == std::string_view::npos ? text.size() : newline + 1;
        ++lineNumber;
    } while (position < text.size() && (text[position] == ' ' || text[position] == '\t'));
    return text.substr(begin, position - begin);
}

ContentBlocks contentBlocksOf(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    return Cutter(text).cut();
}

} // namespace plenzo
