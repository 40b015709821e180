#include "propertylist/format_string.h"

#include <cstddef>
#include <span>

namespace plenzo {

namespace {

/// Reads the places of one format, from its beginning on.
class FormatReader {
public:
    FormatReader(std::string_view format, std::span<const std::string_view> texts)
        : m_rest(format), m_texts(texts) {}

    std::string filled() {
        std::string result;
        while (!m_rest.empty()) {
            result += nextPiece();
        }
        return result;
    }

private:
    std::string_view nextPiece() {
        if (take("%%")) {
            return "%";
        }
        if (take("%@")) {
            return text(m_next++);
        }
        const bool isNumbered = m_rest.size() >= 4 && m_rest[0] == '%' && m_rest[1] >= '1' &&
                                m_rest[1] <= '9' && m_rest.substr(2, 2) == "$@";
        return isNumbered ? text(static_cast<std::size_t>(takeFirst(4)[1] - '1')) : takeFirst(1);
    }
    bool take(std::string_view place) {
        const bool isThere = m_rest.starts_with(place);
        m_rest.remove_prefix(isThere ? place.size() : 0);
        return isThere;
    }
    std::string_view takeFirst(std::size_t count) {
        const std::string_view first = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return first;
    }
    [[nodiscard]] std::string_view text(std::size_t number) const {
        return number < m_texts.size() ? m_texts[number] : std::string_view();
    }

    std::string_view m_rest;
    std::span<const std::string_view> m_texts;
    std::size_t m_next = 0;
};

} // namespace

std::string filledFormat(std::string_view format, std::initializer_list<std::string_view> texts) {
    return FormatReader(format, texts).filled();
}

} // namespace plenzo
