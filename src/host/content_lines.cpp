#include "host/content_lines.h"

#include <algorithm>
#include <array>

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

/// The name after BEGIN or END, in capitals and without white space.
std::string componentName(const ContentLine& line) {
    std::string name;
    for (const char character : line.value()) {
        const bool isSmall = character >= 'a' && character <= 'z';
        if (character != ' ' && character != '\t') {
            name += isSmall ? static_cast<char>(character - 'a' + 'A') : character;
        }
    }
    return name;
}

std::string withoutCarriageReturn(const ContentLine& line) {
    std::string content = line.content();
    content.resize(content.size() - (content.ends_with('\r') ? 1 : 0));
    return content;
}

} // namespace

ContentComponent::ContentComponent(ContentLine begin, int firstLine)
    : m_begin(std::move(begin)), m_name(componentName(m_begin)), m_firstLine(firstLine) {}

const ContentLine* ContentComponent::property(std::string_view name) const {
    for (const Part& part : m_parts) {
        if (!part.component && part.line.name() == name) {
            return &part.line;
        }
    }
    return nullptr;
}

void ContentComponent::setProperty(std::string_view name, std::string_view content,
                                   std::string_view lineEnding) {
    const auto isNamed = [name](const Part& part) {
        return !part.component && part.line.name() == name;
    };
    const auto isProperty = [](const Part& part) {
        return !part.component && !part.line.isBlank();
    };
    const ContentLine line(foldedLine(content, lineEnding));
    const auto found = std::find_if(m_parts.begin(), m_parts.end(), isNamed);
    if (found == m_parts.end()) {
        const auto last = std::find_if(m_parts.rbegin(), m_parts.rend(), isProperty);
        m_parts.insert(last.base(), Part{line, nullptr});
        return;
    }
    found->line = line;
    m_parts.erase(std::remove_if(found + 1, m_parts.end(), isNamed), m_parts.end());
}

void ContentComponent::removeProperties(std::string_view name) {
    std::erase_if(m_parts,
                  [name](const Part& part) { return !part.component && part.line.name() == name; });
}

std::vector<ContentComponent*> ContentComponent::components() const {
    std::vector<ContentComponent*> all;
    for (const Part& part : m_parts) {
        if (part.component) {
            all.push_back(part.component.get());
        }
    }
    return all;
}

std::vector<ContentComponent*> ContentComponent::components(std::string_view name) const {
    std::vector<ContentComponent*> all = components();
    std::erase_if(all, [name](const ContentComponent* one) { return one->name() != name; });
    return all;
}

ContentComponent& ContentComponent::insertAfter(const ContentComponent& sibling,
                                                std::unique_ptr<ContentComponent> component) {
    const auto found = std::find_if(m_parts.begin(), m_parts.end(), [&sibling](const Part& part) {
        return part.component.get() == &sibling;
    });
    const auto place = found == m_parts.end() ? found : found + 1;
    return *m_parts.insert(place, Part{ContentLine(""), std::move(component)})->component;
}

ContentComponent& ContentComponent::append(std::unique_ptr<ContentComponent> component) {
    m_parts.push_back(Part{ContentLine(""), std::move(component)});
    return *m_parts.back().component;
}

void ContentComponent::remove(const ContentComponent& component) {
    std::erase_if(m_parts,
                  [&component](const Part& part) { return part.component.get() == &component; });
}

std::unique_ptr<ContentComponent> ContentComponent::copy() const {
    auto result = std::make_unique<ContentComponent>(m_begin, 0);
    for (const Part& part : m_parts) {
        result->m_parts.push_back({part.line, part.component ? part.component->copy() : nullptr});
    }
    result->m_end = m_end;
    return result;
}

void ContentComponent::appendTo(std::string& text) const {
    text += m_begin.bytes();
    for (const Part& part : m_parts) {
        if (part.component) {
            part.component->appendTo(text);
        } else {
            text += part.line.bytes();
        }
    }
    text += m_end ? m_end->bytes() : "";
}

std::string ContentComponent::text() const {
    std::string result;
    appendTo(result);
    return result;
}

std::vector<ContentComponent*> ContentText::components() const {
    std::vector<ContentComponent*> all;
    for (const ContentComponent::Part& part : m_parts) {
        if (part.component) {
            all.push_back(part.component.get());
        }
    }
    return all;
}

std::string ContentText::text() const {
    std::string result;
    for (const ContentComponent::Part& part : m_parts) {
        if (part.component) {
            part.component->appendTo(result);
        } else {
            result += part.line.bytes();
        }
    }
    return result;
}

/// Walks the lines and keeps the stack of open components.
class ContentParser {
public:
    explicit ContentParser(std::string_view text) : m_text(text) {}

    std::optional<ContentText> parse(std::string& whyNot) {
        const std::size_t newline = m_text.find('\n');
        const bool hasCarriageReturn =
            newline == std::string_view::npos || (newline > 0 && m_text[newline - 1] == '\r');
        m_result.m_lineEnding = hasCarriageReturn ? "\r\n" : "\n";
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
    // A line with the continuation lines that follow it.
    std::string_view nextContentLine() {
        const std::size_t begin = m_position;
        m_firstLine = m_nextLine;
        do {
            const std::size_t newline = m_text.find('\n', m_position);
            m_position = newline == std::string_view::npos ? m_text.size() : newline + 1;
            ++m_nextLine;
        } while (m_position < m_text.size() &&
                 (m_text[m_position] == ' ' || m_text[m_position] == '\t'));
        return m_text.substr(begin, m_position - begin);
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
    int m_nextLine = 1;
    int m_firstLine = 1;
    std::vector<ContentComponent*> m_open;
    std::string m_fault;
    ContentText m_result;
};

std::optional<ContentText> ContentText::fromText(std::string_view text, std::string& whyNot) {
    return ContentParser(text).parse(whyNot);
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
