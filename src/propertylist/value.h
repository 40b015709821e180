#pragma once

#include "propertylist/block.h"
#include "propertylist/value_type.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
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
    Value(std::same_as<bool> auto value) : Value(Kind::Boolean, value) {}
    template <std::integral Number>
    requires(!std::same_as<Number, bool>) Value(Number number);
    Value(double number) : Value(Kind::Real, number) {}
    Value(Date date) : Value(Kind::Date, date.secondsSinceReferenceDate) {}
    Value(Color color) : Value(Kind::Color, color) {}
    /// Text is UTF-8 and is kept as it stands, valid or not. A string of 4 GiB or more is Nothing.
    Value(std::string_view text);
    Value(std::nullptr_t) = delete;
    Value(const char* text) : Value(std::string_view(text)) {}
    Value(const std::string& text) : Value(std::string_view(text)) {}
    Value(Array array);
    Value(Dictionary dictionary);
    /// Data of 4 GiB or more is Nothing.
    static Value fromData(std::span<const std::byte> bytes);

    Value(const Value& other) : m_cell(other.m_cell) { retain(); }
    Value(Value&& other) noexcept : m_cell(other.m_cell) { other.m_cell.kind = Kind::Nothing; }
    Value& operator=(const Value& other) {
        Value copy(other);
        return *this = std::move(copy);
    }
    Value& operator=(Value&& other) noexcept {
        if (this != &other) {
            release();
            m_cell = other.m_cell;
            other.m_cell.kind = Kind::Nothing;
        }
        return *this;
    }
    ~Value() { release(); }

    ValueType type() const { return typeOfKind[static_cast<std::size_t>(m_cell.kind)]; }
    bool isNothing() const { return m_cell.kind == Kind::Nothing; }

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

    /// Stands for what this value and others share, for as long as they do; null when it shares
    /// nothing, as a short string or a number never does.
    const void* sharedContent() const {
        return holdsBlock() && block() != nullptr && block()->isShared() ? block() : nullptr;
    }

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
    static constexpr ValueType typeOfKind[] = {
        ValueType::Nothing, ValueType::String,  ValueType::Integer, ValueType::Integer,
        ValueType::Real,    ValueType::Boolean, ValueType::Date,    ValueType::Color,
        ValueType::String,  ValueType::Data,    ValueType::Array,   ValueType::Dictionary};
    static_assert(std::size(typeOfKind) == static_cast<std::size_t>(Kind::Dictionary) + 1);

    /// The 16 bytes; copying them shares what they point to without counting it.
    struct Cell {
        static constexpr std::size_t inlineCapacity = 14;

        template <typename Content>
        void store(const Content& content) {
            std::memcpy(payload, &content, sizeof(Content));
        }
        template <typename Content>
        Content load() const {
            Content content;
            std::memcpy(&content, payload, sizeof(Content));
            return content;
        }

        alignas(8) std::byte payload[inlineCapacity] = {};
        std::uint8_t inlineLength = 0;
        Kind kind = Kind::Nothing;
    };

    explicit Value(Kind kind) { m_cell.kind = kind; }
    template <typename Content>
    Value(Kind kind, const Content& content) : Value(kind) {
        m_cell.store(content);
    }
    /// The block may be null: an empty collection has none.
    static Value holding(Kind kind, Block* block) { return {kind, static_cast<void*>(block)}; }

    Block* block() const { return static_cast<Block*>(m_cell.load<void*>()); }
    bool holdsBlock() const { return m_cell.kind >= Kind::LongString; }
    void retain() const {
        if (holdsBlock())
            retainBlock();
    }
    void release() {
        if (holdsBlock())
            releaseBlock();
    }
    void retainBlock() const {
        if (Block* held = block())
            held->retain();
    }
    void releaseBlock();
    std::string_view text() const;
    template <typename Visitor>
    auto visitNumber(Visitor visitor) const;

    Cell m_cell;
};
static_assert(sizeof(Value) == 16);

template <std::integral Number>
requires(!std::same_as<Number, bool>) Value::Value(Number number) {
    if constexpr (std::unsigned_integral<Number>) {
        m_cell.kind =
            number > static_cast<std::uint64_t>(INT64_MAX) ? Kind::LargeUnsigned : Kind::Integer;
        m_cell.store(static_cast<std::uint64_t>(number));
    } else {
        m_cell.kind = Kind::Integer;
        m_cell.store(static_cast<std::int64_t>(number));
    }
}

} // namespace plenzo
