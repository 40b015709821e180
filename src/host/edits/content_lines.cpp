#include "host/edits/content_lines.h"

#include <algorithm>

namespace plenzo {

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

std::vector<const ContentLine*> ContentComponent::properties(std::string_view name) const {
    std::vector<const ContentLine*> all;
    for (const Part& part : m_parts) {
        if (!part.component && part.line.name() == name) {
            all.push_back(&part.line);
        }
    }
    return all;
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
    return insertAmong(m_parts, sibling, std::move(component));
}

ContentComponent& ContentComponent::insertAmong(std::vector<Part>& parts,
                                                const ContentComponent& sibling,
                                                std::unique_ptr<ContentComponent> component) {
    const auto found = std::find_if(parts.begin(), parts.end(), [&sibling](const Part& part) {
        return part.component.get() == &sibling;
    });
    if (found != parts.end()) {
        found->component->endLastLine();
    }
    const auto place = found == parts.end() ? found : found + 1;
    return *parts.insert(place, Part{ContentLine(""), std::move(component)})->component;
}

void ContentComponent::endLastLine() {
    if (m_end) {
        m_end = m_end->endedLike(m_begin);
    }
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
    auto result = std::make_unique<ContentComponent>(m_begin.withoutByteOrderMark(), 0);
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

ContentComponent& ContentText::insertAfter(const ContentComponent& sibling,
                                           std::unique_ptr<ContentComponent> component) {
    return ContentComponent::insertAmong(m_parts, sibling, std::move(component));
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

} // namespace plenzo
