#include "host/weather/json_text.h"

#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace plenzo {

namespace {

using Parser = nlohmann::json;

constexpr std::size_t deepest = 16;

/// Walks through the text and tells how far it is.
class ObservedIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    ObservedIterator(const char* position, const char*& observer)
        : m_position(position), m_observer(&observer) {}

    reference operator*() const { return *m_position; }
    ObservedIterator& operator++() {
        *m_observer = ++m_position;
        return *this;
    }
    ObservedIterator operator++(int) {
        const ObservedIterator old = *this;
        ++*this;
        return old;
    }
    friend bool operator==(const ObservedIterator& left, const ObservedIterator& right) {
        return left.m_position == right.m_position;
    }

private:
    const char* m_position;
    const char** m_observer;
};

/// The parser's words without the place, which is told otherwise, and without what it has read,
/// which may be long or no text at all.
std::string reasonFrom(std::string text) {
    text.erase(0, text.starts_with('[') ? text.find(' ') + 1 : 0);
    text.erase(0, text.starts_with("parse error at") ? text.find(": ") + 2 : 0);
    text.resize(std::min({text.size(), text.find("; last read: "), text.find(" parsing '")}));
    return text;
}

/// Takes what the parser finds, in its order.
class TreeBuilder {
public:
    explicit TreeBuilder(std::string_view text) : m_text(text), m_position(text.data()) {}

    JsonText build() {
        const char* end = m_text.data() + m_text.size();
        const bool isWhole = Parser::sax_parse(ObservedIterator(m_position, m_position),
                                               ObservedIterator(end, m_end), this);
        if (!isWhole) {
            m_result.root.reset();
        }
        return std::move(m_result);
    }

    // The names and types of these are the parser's.
    bool null() { return addScalar(JsonKind::Null, {}); }
    bool boolean(bool value) { return addScalar(JsonKind::Boolean, value); }
    bool number_integer(std::int64_t value) { return addScalar(JsonKind::Number, value); }
    bool number_unsigned(std::uint64_t value) { return addScalar(JsonKind::Number, value); }
    bool number_float(double value, const std::string& /*text*/) {
        return addScalar(JsonKind::Number, value);
    }
    bool string(const std::string& value) { return addScalar(JsonKind::Text, value); }
    bool binary(const Parser::binary_t& /*value*/) { return false; } // JSON has none
    bool start_object(std::size_t /*size*/) { return open(JsonKind::Object); }
    bool start_array(std::size_t /*size*/) { return open(JsonKind::Array); }
    bool end_object() { return close(); }
    bool end_array() { return close(); }
    bool key(std::string& name) {
        m_name = std::move(name);
        m_previousEnd = position();
        return true;
    }
    bool parse_error(std::size_t charactersRead, const std::string& /*token*/,
                     const nlohmann::detail::exception& error) {
        addProblem(std::min(charactersRead, m_text.size() + 1) - (charactersRead > 0 ? 1 : 0),
                   "is no JSON: " + reasonFrom(error.what()));
        return false;
    }

private:
    std::size_t position() const { return static_cast<std::size_t>(m_position - m_text.data()); }

    /// The first byte of what was read last: the parser tells only where that ends.
    std::size_t takeBegin() {
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        const bool isMarked = m_previousEnd == 0 && m_text.starts_with(byteOrderMark);
        const std::size_t from = isMarked ? byteOrderMark.size() : m_previousEnd;
        m_previousEnd = position();
        return std::min(m_text.find_first_not_of(" \t\r\n,:", from), m_text.size());
    }

    void addProblem(std::size_t offset, std::string text) {
        m_result.problems.push_back({placeInText(m_text, offset), std::move(text)});
    }

    bool addScalar(JsonKind kind, Value scalar) {
        const std::size_t begin = takeBegin();
        if (m_skipped == 0) {
            add({std::exchange(m_name, {}), {kind, begin, std::move(scalar), {}}});
        }
        return true;
    }

    void add(JsonMember member) {
        if (m_open.empty()) {
            m_result.root = std::move(member.value);
            return;
        }
        m_open.back().value.members.push_back(std::move(member));
    }

    bool open(JsonKind kind) {
        const std::size_t begin = takeBegin();
        if (m_skipped == 0 && m_open.size() < deepest) {
            m_open.push_back({std::exchange(m_name, {}), {kind, begin, {}, {}}});
            return true;
        }
        if (m_skipped == 0 && !m_wasTooDeep) {
            m_wasTooDeep = true;
            addProblem(begin, "lies too deep, and is left out");
        }
        ++m_skipped;
        return true;
    }

    bool close() {
        m_previousEnd = position();
        if (m_skipped > 0) {
            --m_skipped;
            return true;
        }
        JsonMember member = std::move(m_open.back());
        m_open.pop_back();
        add(std::move(member));
        return true;
    }

    std::string_view m_text;
    const char* m_position;
    const char* m_end = nullptr;
    std::size_t m_previousEnd = 0;
    std::string m_name;
    std::vector<JsonMember> m_open;
    std::size_t m_skipped = 0; // arrays and objects that are open, but too deep
    bool m_wasTooDeep = false;
    JsonText m_result;
};

Value arrayOf(const std::vector<JsonMember>& members) {
    Array array;
    for (const JsonMember& member : members) {
        if (member.value.kind != JsonKind::Null) {
            array.append(member.value.propertyValue());
        }
    }
    return array;
}

Value dictionaryOf(const std::vector<JsonMember>& members) {
    Dictionary dictionary;
    for (const JsonMember& member : members) {
        if (member.value.kind != JsonKind::Null) {
            dictionary.set(member.name, member.value.propertyValue());
        }
    }
    return dictionary;
}

} // namespace

Value JsonValue::propertyValue() const {
    switch (kind) {
    case JsonKind::Array:
        return arrayOf(members);
    case JsonKind::Object:
        return dictionaryOf(members);
    default:
        return scalar;
    }
}

JsonText readJson(std::string_view text) {
    return TreeBuilder(text).build();
}

TextPlace placeInText(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const std::size_t lineBegin = before.rfind('\n') + 1; // of nothing found that is 0
    const auto isCharacter = [](char byte) { return (byte & 0xC0) != 0x80; };
    return {static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1,
            static_cast<int>(std::count_if(before.begin() + static_cast<std::ptrdiff_t>(lineBegin),
                                           before.end(), isCharacter)) +
                1};
}

} // namespace plenzo
