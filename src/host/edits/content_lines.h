#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// One content line (RFC 5545, 3.1) with its exact bytes: its folds, its casing and its line
/// ending.
class ContentLine {
public:
    /// The bytes up to and with the last line ending; they may begin with a byte order mark.
    explicit ContentLine(std::string bytes);

    const std::string& bytes() const { return m_bytes; }

    /// The bytes without folds, line ending and byte order mark.
    std::string content() const;

    /// In capitals; empty for a line that names nothing.
    const std::string& name() const { return m_name; }

    /// What stands between the name and the value, with its first semicolon: ";VALUE=DATE".
    std::string parameters() const;

    /// The value of a parameter without its quotation marks, or empty. The name is in capitals.
    std::string parameter(std::string_view name) const;

    /// Without white space around it.
    std::string value() const;

    /// The value of a TEXT with its escapes undone.
    std::string text() const;

    bool isBlank() const;

    /// The same line for another place than the text's first: without byte order mark.
    ContentLine withoutByteOrderMark() const;

    /// The same line for another place than the text's last: ended as the other line is.
    ContentLine endedLike(const ContentLine& other) const;

private:
    std::string m_bytes;
    std::string m_name;
};

/// The bytes of a new line: folded at 75 octets between characters, with that line ending at its
/// end and at its folds. The content is one line.
std::string foldedLine(std::string_view content, std::string_view lineEnding);

/// A text as the value of a TEXT property.
std::string escapedText(std::string_view text);

/// What a BEGIN or END names, in capitals and without white space.
std::string componentName(const ContentLine& line);

/// A component as it stands in a text, with everything in it in its order. Whatever is not edited
/// keeps its bytes.
class ContentComponent {
public:
    /// A property, or a component.
    struct Part {
        ContentLine line;
        std::unique_ptr<ContentComponent> component; // null for a property
    };

    ContentComponent(ContentLine begin, int firstLine);

    const std::string& name() const { return m_name; }
    int firstLine() const { return m_firstLine; } // of its BEGIN in the text; 0 for a new one

    /// The first property of that name, or null; and all of them.
    const ContentLine* property(std::string_view name) const;
    std::vector<const ContentLine*> properties(std::string_view name) const;

    /// Puts a line in the place of the first property of that name and takes away the others; a new
    /// one goes behind the last property. The content is the line without its ending.
    void setProperty(std::string_view name, std::string_view content, std::string_view lineEnding);
    void removeProperties(std::string_view name);

    std::vector<ContentComponent*> components() const;
    std::vector<ContentComponent*> components(std::string_view name) const;

    /// Behind a sibling that the text ends with, without a line ending, it gets one.
    ContentComponent& insertAfter(const ContentComponent& sibling,
                                  std::unique_ptr<ContentComponent> component);
    ContentComponent& append(std::unique_ptr<ContentComponent> component);
    void remove(const ContentComponent& component);

    std::unique_ptr<ContentComponent> copy() const; // for another place in the text
    void appendTo(std::string& text) const;
    std::string text() const;

private:
    friend class ContentParser;
    friend class ContentText;

    static ContentComponent& insertAmong(std::vector<Part>& parts, const ContentComponent& sibling,
                                         std::unique_ptr<ContentComponent> component);

    void endLastLine();

    ContentLine m_begin;
    std::optional<ContentLine> m_end;
    std::string m_name;
    int m_firstLine;
    std::vector<Part> m_parts;
};

/// A whole iCalendar text without loss: written back it has the same bytes.
class ContentText {
public:
    /// Nothing for a text that may not be edited; `whyNot` says so with the line. Refused are: NUL
    /// bytes, lines of more than 16 MiB, components that do not close or are nested more than 16
    /// deep, a VEVENT in a VEVENT, and properties outside of a component.
    static std::optional<ContentText> fromText(std::string_view text, std::string& whyNot);

    /// Whatever is damaged: the components that a reader finds whole stand in none, and all else is
    /// kept as it is. Not for a text that somebody's file gets.
    static ContentText fromDamagedText(std::string_view text);

    /// "\r\n" or "\n", as the text's first line has it.
    const std::string& lineEnding() const { return m_lineEnding; }

    /// The components that stand in none: VCALENDAR, and in some files items.
    std::vector<ContentComponent*> components() const;
    ContentComponent& insertAfter(const ContentComponent& sibling,
                                  std::unique_ptr<ContentComponent> component);

    std::string text() const;

private:
    friend class ContentParser;
    friend std::unique_ptr<ContentComponent> componentFromText(std::string_view text,
                                                               std::string_view lineEnding);

    std::string m_lineEnding = "\r\n";
    std::vector<ContentComponent::Part> m_parts;
};

/// The one component that a text holds, with the given line ending and its lines folded anew; null
/// when it holds something else.
std::unique_ptr<ContentComponent> componentFromText(std::string_view text,
                                                    std::string_view lineEnding);

} // namespace plenzo
