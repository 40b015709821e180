#include "propertylist/value.h"

#include "propertylist/dictionary.h"

#include <new>
#include <utility>

namespace plenzo {

Value::Value(std::string_view text) {
    if (text.size() <= Cell::inlineCapacity) {
        m_cell.kind = Kind::ShortString;
        m_cell.inlineLength = static_cast<std::uint8_t>(text.size());
        if (!text.empty())
            std::memcpy(m_cell.payload, text.data(), text.size());
    } else if (text.size() <= UINT32_MAX) {
        *this = holding(Kind::LongString, makeBytesBlock(text.data(), text.size()));
    }
}

Value::Value(Array array) : Value(holding(Kind::Array, std::exchange(array.m_block, nullptr))) {}

Value::Value(Dictionary dictionary)
    : Value(holding(Kind::Dictionary, std::exchange(dictionary.m_block, nullptr))) {}

Value Value::fromData(std::span<const std::byte> bytes) {
    if (bytes.size() > UINT32_MAX)
        return {};
    return holding(Kind::Data, makeBytesBlock(bytes.data(), bytes.size()));
}

void Value::releaseBlock() {
    Block* held = block();
    if (held == nullptr || !held->dropReference())
        return;
    if (m_cell.kind == Kind::Array || m_cell.kind == Kind::Dictionary)
        destroyCollection(static_cast<CollectionBlock*>(held));
    else
        freeBlock(held);
}

std::string_view Value::text() const {
    if (m_cell.kind == Kind::ShortString)
        return {reinterpret_cast<const char*>(m_cell.payload), m_cell.inlineLength};
    auto* bytes = static_cast<BytesBlock*>(block());
    return {bytes->bytes(), bytes->size};
}

std::optional<std::string_view> Value::string() const {
    if (m_cell.kind != Kind::ShortString && m_cell.kind != Kind::LongString)
        return std::nullopt;
    return text();
}

std::optional<Date> Value::date() const {
    if (m_cell.kind != Kind::Date)
        return std::nullopt;
    return Date{m_cell.load<double>()};
}

std::optional<Color> Value::color() const {
    if (m_cell.kind != Kind::Color)
        return std::nullopt;
    return m_cell.load<Color>();
}

std::optional<std::span<const std::byte>> Value::data() const {
    if (m_cell.kind != Kind::Data)
        return std::nullopt;
    auto* bytes = static_cast<BytesBlock*>(block());
    return std::as_bytes(std::span(bytes->bytes(), bytes->size));
}

// A cell that holds an array or a dictionary begins with the handle's only member.

const Array* Value::array() const {
    static_assert(sizeof(Array) == sizeof(void*));
    return m_cell.kind == Kind::Array ? std::launder(reinterpret_cast<const Array*>(m_cell.payload))
                                      : nullptr;
}

const Dictionary* Value::dictionary() const {
    static_assert(sizeof(Dictionary) == sizeof(void*));
    return m_cell.kind == Kind::Dictionary
               ? std::launder(reinterpret_cast<const Dictionary*>(m_cell.payload))
               : nullptr;
}

Array* Value::mutableArray() {
    return m_cell.kind == Kind::Array ? std::launder(reinterpret_cast<Array*>(m_cell.payload))
                                      : nullptr;
}

Dictionary* Value::mutableDictionary() {
    return m_cell.kind == Kind::Dictionary
               ? std::launder(reinterpret_cast<Dictionary*>(m_cell.payload))
               : nullptr;
}

} // namespace plenzo
