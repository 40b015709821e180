#include "propertylist/value.h"

#include "propertylist/dictionary.h"

#include <new>
#include <utility>

namespace plenzo {

Value::Value(std::string_view text) {
    if (text.size() <= inlineCapacity) {
        m_kind = Kind::ShortString;
        m_inlineLength = static_cast<std::uint8_t>(text.size());
        if (!text.empty())
            std::memcpy(m_payload, text.data(), text.size());
    } else if (text.size() <= UINT32_MAX) {
        m_kind = Kind::LongString;
        store<Block*>(makeBytesBlock(text.data(), text.size()));
    }
}

Value::Value(Array array) : Value(Kind::Array, std::exchange(array.m_block, nullptr)) {}

Value::Value(Dictionary dictionary)
    : Value(Kind::Dictionary, std::exchange(dictionary.m_block, nullptr)) {}

Value Value::fromData(std::span<const std::byte> bytes) {
    if (bytes.size() > UINT32_MAX)
        return {};
    return Value(Kind::Data, makeBytesBlock(bytes.data(), bytes.size()));
}

void Value::releaseBlock() {
    auto* block = load<Block*>();
    if (block == nullptr || !block->dropReference())
        return;
    if (m_kind == Kind::Array || m_kind == Kind::Dictionary)
        destroyCollection(static_cast<CollectionBlock*>(block));
    else
        freeBlock(block);
}

ValueType Value::type() const {
    switch (m_kind) {
    case Kind::Nothing:
        return ValueType::Nothing;
    case Kind::ShortString:
    case Kind::LongString:
        return ValueType::String;
    case Kind::Integer:
    case Kind::LargeUnsigned:
        return ValueType::Integer;
    case Kind::Real:
        return ValueType::Real;
    case Kind::Boolean:
        return ValueType::Boolean;
    case Kind::Date:
        return ValueType::Date;
    case Kind::Color:
        return ValueType::Color;
    case Kind::Data:
        return ValueType::Data;
    case Kind::Array:
        return ValueType::Array;
    case Kind::Dictionary:
        return ValueType::Dictionary;
    }
    return ValueType::Nothing;
}

std::string_view Value::text() const {
    if (m_kind == Kind::ShortString)
        return {reinterpret_cast<const char*>(m_payload), m_inlineLength};
    auto* block = static_cast<BytesBlock*>(load<Block*>());
    return {block->bytes(), block->size};
}

std::optional<std::string_view> Value::string() const {
    if (m_kind != Kind::ShortString && m_kind != Kind::LongString)
        return std::nullopt;
    return text();
}

std::optional<Date> Value::date() const {
    if (m_kind != Kind::Date)
        return std::nullopt;
    return Date{load<double>()};
}

std::optional<Color> Value::color() const {
    if (m_kind != Kind::Color)
        return std::nullopt;
    return load<Color>();
}

std::optional<std::span<const std::byte>> Value::data() const {
    if (m_kind != Kind::Data)
        return std::nullopt;
    auto* block = static_cast<BytesBlock*>(load<Block*>());
    return std::as_bytes(std::span(block->bytes(), block->size));
}

// A cell that holds an array or a dictionary begins with the handle's only member.

const Array* Value::array() const {
    static_assert(sizeof(Array) == sizeof(Block*));
    return m_kind == Kind::Array ? std::launder(reinterpret_cast<const Array*>(m_payload))
                                 : nullptr;
}

const Dictionary* Value::dictionary() const {
    static_assert(sizeof(Dictionary) == sizeof(Block*));
    return m_kind == Kind::Dictionary ? std::launder(reinterpret_cast<const Dictionary*>(m_payload))
                                      : nullptr;
}

Array* Value::mutableArray() {
    return m_kind == Kind::Array ? std::launder(reinterpret_cast<Array*>(m_payload)) : nullptr;
}

Dictionary* Value::mutableDictionary() {
    return m_kind == Kind::Dictionary ? std::launder(reinterpret_cast<Dictionary*>(m_payload))
                                      : nullptr;
}

} // namespace plenzo
