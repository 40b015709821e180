#include "host/edits/content_lines.h"
#include "host/ical/content_blocks.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace plenzo {

namespace {

constexpr std::size_t deepestNesting = 16;
constexpr std::size_t longestLineBytes = std::size_t{16} * 1024 * 1024;

/// What stands directly in a calendar and in nothing else.
constexpr std::array<std::string_view, 6> standsInCalendar = {
    "VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY", "VTIMEZONE", "VAVAILABILITY"};

bool isOuter(std::string_view name) {
    return std::find(standsInCalendar.begin(), standsInCalendar.end(), name) !=
           standsInCalendar.end();
}

std::string withoutCarriageReturn(const ContentLine& line) {
    std::string content = line.content();
    content.resize(content.size() - (content.ends_with('\r') ? 1 : 0));
    return content;
}

std::string lineEndingOf(std::string_view text) {
    const std::size_t newline = text.find('\n');
    const bool hasCarriageReturn =
        newline == std::string_view::npos || (newline > 0 && text[newline - 1] == '\r');
    return hasCarriageReturn ? "\r\n" : "\n";
}

} // namespace

/// Walks the lines and keeps the stack of open components.
class ContentParser {
public:
    explicit ContentParser(std::string_view text, int firstLine = 1)
        : m_text(text), m_nextLine(firstLine) {}

    std::optional<ContentText> parse(std::string& whyNot) {
        m_result.m_lineEnding = lineEndingOf(m_text);
        while (m_position < m_text.size() && m_fault.empty()) {
            takeLine();
        }
        if (m_fault.empty() && !m_open.empty()) {
            m_firstLine = m_open.back()->firstLine();
            m_fault = m_open.back()->name() + " does not end";
        }
        if (!m_fault.empty()) {
            whyNot = "line " + std::to_string(m_firstLine) + ": " + m_fault;
            return std::nullopt;
        }
        return std::move(m_result);
    }

private:
    std::string_view nextContentLine() {
        m_firstLine = m_nextLine;
        return takeContentLine(m_text, m_position, m_nextLine);
    }

    void takeLine() {
        const std::string_view bytes = nextContentLine();
        if (bytes.size() > longestLineBytes) {
            m_fault = "a line of more than 16 MiB";
            return;
        }
        if (bytes.find('\0') != std::string_view::npos) {
            m_fault = "a NUL byte";
            return;
        }
        ContentLine line{std::string(bytes)};
        if (line.name() == "BEGIN") {
            takeBegin(std::move(line));
        } else if (line.name() == "END") {
            takeEnd(std::move(line));
        } else if (m_open.empty() && !line.name().empty()) {
            m_fault = "a property outside of a component";
        } else {
            parts().push_back({std::move(line), nullptr});
        }
    }

    void takeBegin(ContentLine line) {
        auto component = std::make_unique<ContentComponent>(std::move(line), m_firstLine);
        const bool isMisplaced = (component->name() == "VCALENDAR" && !m_open.empty()) ||
                                 (isOuter(component->name()) && m_open.size() > 1);
        if (isMisplaced || m_open.size() >= deepestNesting) {
            m_fault = "BEGIN:" + component->name() + " in " + m_open.back()->name();
            return;
        }
        ContentComponent* opened = component.get();
        parts().push_back({ContentLine(""), std::move(component)});
        m_open.push_back(opened);
    }

    void takeEnd(ContentLine line) {
        const std::string name = componentName(line);
        if (m_open.empty() || name != m_open.back()->name()) {
            m_fault = "END:" + name + " without its BEGIN";
            return;
        }
        m_open.back()->m_end = std::move(line);
        m_open.pop_back();
    }

    std::vector<ContentComponent::Part>& parts() {
        return m_open.empty() ? m_result.m_parts : m_open.back()->m_parts;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
    int m_nextLine;
    int m_firstLine = 1;
    std::vector<ContentComponent*> m_open;
    std::string m_fault;
    ContentText m_result;
};

std::optional<ContentText> ContentText::fromText(std::string_view text, std::string& whyNot) {
    return ContentParser(text).parse(whyNot);
}

ContentText ContentText::fromDamagedText(std::string_view text) {
    ContentText result;
    result.m_lineEnding = lineEndingOf(text);
    std::size_t kept = 0;
    const auto keepUpTo = [&](std::size_t end) {
        result.m_parts.push_back(
            {ContentLine(std::string(text.substr(kept, end - kept))), nullptr});
    };
    for (const ComponentBlock& block : contentBlocksOf(text).components) {
        std::string whyNot;
        auto parsed = ContentParser(block.text, block.line).parse(whyNot);
        if (parsed) {
            const auto begin = static_cast<std::size_t>(block.text.data() - text.data());
            keepUpTo(begin);
            std::move(parsed->m_parts.begin(), parsed->m_parts.end(),
                      std::back_inserter(result.m_parts));
            kept = begin + block.text.size();
        }
    }
    keepUpTo(text.size());
    return result;
}

std::unique_ptr<ContentComponent> componentFromText(std::string_view text,
                                                    std::string_view lineEnding) {
    std::string refolded;
    while (!text.empty()) {
        std::size_t end = text.find('\n');
        while (end != std::string_view::npos && end + 1 < text.size() &&
               (text[end + 1] == ' ' || text[end + 1] == '\t')) {
            end = text.find('\n', end + 1);
        }
        const ContentLine line(std::string(text.substr(0, end)));
        refolded += line.isBlank() ? "" : foldedLine(withoutCarriageReturn(line), lineEnding);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    std::string whyNot;
    auto parsed = ContentText::fromText(refolded, whyNot);
    const bool isOne = parsed && parsed->m_parts.size() == 1 && parsed->m_parts[0].component;
    return isOne ? std::move(parsed->m_parts[0].component) : nullptr;
}

} // namespace plenzo
