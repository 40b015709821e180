#pragma once

#include "propertylist/block.h"
#include "propertylist/value_type.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace plenzo {

class Array;
class Dictionary;

/// One property-list value in 16 bytes. Short strings and numbers lie inside; longer strings, data,
/// arrays and dictionaries are one pointer to one counted block, shared by copies until one of them
/// is changed. Values may be handed from thread to thread.
class Value {
public:
    constexpr Value() = default;
    Value(std::same_as<bool> auto value) : m_kind(Kind::Boolean) { store(value); }
    template <std::integral Number>
    requires(!std::same_as<Number, bool>) Value(Number number);
    Value(double number) : m_kind(Kind::Real) { store(number); }
    Value(Date date) : m_kind(Kind::Date) { store(date.secondsSinceReferenceDate); }
    Value(Color color) : m_kind(Kind::Color) { store(color); }
    /// Text is UTF-8 and is kept as it stands, valid or not. A string of 4 GiB or more is Nothing.
    Value(std::string_view text);
    Value(const char* text) : Value(std::string_view(text)) {}
    Value(const std::string& text) : Value(std::string_view(text)) {}
    Value(Array array);
    Value(Dictionary dictionary);
    /// Data of 4 GiB or more is Nothing.
    static Value fromData(std::span<const std::byte> bytes);

    Value(const Value& other) : Value(other, Raw::Copy) { retain(); }
    Value(Value&& other) noexcept : Value(other, Raw::Copy) { other.m_kind = Kind::Nothing; }
    Value& operator=(const Value& other) {
        Value copy(other);
        return *this = std::move(copy);
    }
    Value& operator=(Value&& other) noexcept {
        if (this != &other) {
            release();
            copyCell(other);
            other.m_kind = Kind::Nothing;
        }
        return *this;
    }
    ~Value() { release(); }

    ValueType type() const;
    bool isNothing() const { return m_kind == Kind::Nothing; }

    /// Numbers are true unless 0 or NaN, and so are the numbers that strings spell; anything else
    /// is false.
    bool boolValue() const;
    /// Numbers and the numbers that strings spell, truncated toward zero and saturating; NaN and
    /// anything else is 0. A string spells a number when all of it, but for spaces around it, is a
    /// decimal number that a double can hold, with or without an exponent.
    std::int64_t integerValue() const;
    /// Likewise up to UINT64_MAX; a negative number is 0.
    std::uint64_t unsignedIntegerValue() const;
    /// Likewise; not truncated.
    double doubleValue() const;

    /// Points into the value.
    std::optional<std::string_view> string() const;
    std::optional<Date> date() const;
    std::optional<Color> color() const;
    /// Points into the value.
    std::optional<std::span<const std::byte>> data() const;
    /// Null when it is something else.
    const Array* array() const;
    const Dictionary* dictionary() const;
    /// To change it in place; other values that share it keep what they have.
    Array* mutableArray();
    Dictionary* mutableDictionary();

    /// Numbers are equal by their exact worth, 1 and 1.0 too, and NaN equals NaN; a boolean is no
    /// number. Dictionaries are equal regardless of order.
    friend bool operator==(const Value& left, const Value& right);

private:
    friend class DeadCollections;

    /// The kinds from LongString on hold a block.
    enum class Kind : std::uint8_t {
        Nothing,
        ShortString,
        Integer,
        LargeUnsigned, // above INT64_MAX
        Real,
        Boolean,
        Date,
        Color,
        LongString,
        Data,
        Array,
        Dictionary
    };
    enum class Raw { Copy };

    static constexpr std::size_t inlineCapacity = 14;

    Value(const Value& other, Raw) { copyCell(other); }
    Value(Kind kind, Block* block) : m_kind(kind) { store(block); }

    template <typename Content>
    void store(const Content& content) {
        std::memcpy(m_payload, &content, sizeof(Content));
    }
    template <typename Content>
    Content load() const {
        Content content;
        std::memcpy(&content, m_payload, sizeof(Content));
        return content;
    }
    void copyCell(const Value& other) {
        std::memcpy(static_cast<void*>(this), &other, sizeof(Value));
    }
    bool holdsBlock() const { return m_kind >= Kind::LongString; }
    void retain() const {
        if (holdsBlock())
            retainBlock();
    }
    void release() {
        if (holdsBlock())
            releaseBlock();
    }
    void retainBlock() const {
        if (Block* block = load<Block*>())
            block->retain();
    }
    void releaseBlock();
    std::string_view text() const;
    template <typename Visitor>
    auto visitNumber(Visitor visitor) const;

    alignas(8) std::byte m_payload[inlineCapacity] = {};
    std::uint8_t m_inlineLength = 0;
    Kind m_kind = Kind::Nothing;
};
static_assert(sizeof(Value) == 16);

template <std::integral Number>
requires(!std::same_as<Number, bool>) Value::Value(Number number) : m_kind(Kind::Integer) {
    if constexpr (std::unsigned_integral<Number>) {
        if (number > static_cast<std::uint64_t>(INT64_MAX))
            m_kind = Kind::LargeUnsigned;
        store(static_cast<std::uint64_t>(number));
    } else {
        store(static_cast<std::int64_t>(number));
    }
}

} // namespace plenzo
