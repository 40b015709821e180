#pragma once

#include "propertylist/array.h"
#include "propertylist/key.h"
#include "propertylist/value.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace plenzo {

/// Values by key, in the order in which their keys were first set: a pointer to a counted block,
/// shared by copies until one of them is changed. A small one is searched along, a large one
/// through an index in the same block. Holds at most 2^31 entries; more are not added.
class Dictionary {
public:
    struct Entry {
        Key key;
        Value value;
    };

    Dictionary() = default;
    /// Of entries with the same key the last one counts.
    Dictionary(std::initializer_list<Entry> entries);
    Dictionary(const Dictionary& other) : m_block(other.m_block) {
        if (m_block != nullptr)
            m_block->retain();
    }
    Dictionary(Dictionary&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    Dictionary& operator=(Dictionary other) noexcept {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~Dictionary() {
        if (m_block != nullptr && m_block->dropReference())
            destroyCollection(m_block);
    }

    std::size_t size() const { return m_block ? m_block->size : 0; }
    bool empty() const { return size() == 0; }
    /// Whether find() takes the same time however many entries there are; a small one is walked.
    bool isIndexed() const;
    /// Asks for the entries from memory, without waiting: for a dictionary that is read soon.
    void prefetch() const {
        if (m_block == nullptr)
            return;
        for (std::size_t offset = 0; offset < prefetchedBytes; offset += 64)
            __builtin_prefetch(reinterpret_cast<const std::byte*>(m_block) + offset);
    }
    const Entry* begin() const { return m_block ? m_block->elements<Entry>() : nullptr; }
    const Entry* end() const { return begin() + size(); }

    /// Makes room for this many entries in all, no more.
    void reserve(std::size_t capacity);
    /// Null when the key is absent.
    const Value* find(KeyView key) const;
    bool contains(KeyView key) const { return find(key) != nullptr; }
    /// Replaces the value of a key that is there, in its old place.
    void set(Key key, Value value);
    /// Takes time in proportion to the size. Does nothing when the key is absent.
    void remove(KeyView key);
    void clear() { *this = Dictionary(); }
    /// To change a value in place. Null when the key is absent.
    Value* findMutable(KeyView key);

    /// Typed reading: what the value's conversions give, and for an absent key false, 0 or nothing.
    bool boolForKey(KeyView key) const;
    std::int64_t integerForKey(KeyView key) const;
    double doubleForKey(KeyView key) const;
    /// Points into the dictionary, as do data, arrays and dictionaries.
    std::optional<std::string_view> stringForKey(KeyView key) const;
    std::optional<Date> dateForKey(KeyView key) const;
    std::optional<std::span<const std::byte>> dataForKey(KeyView key) const;
    const Array* arrayForKey(KeyView key) const;
    const Dictionary* dictionaryForKey(KeyView key) const;

    friend bool operator==(const Dictionary& left, const Dictionary& right);

private:
    friend class Value;

    static constexpr std::size_t absent = SIZE_MAX;
    /// The head and fourteen entries.
    static constexpr std::size_t prefetchedBytes = 384;

    std::size_t entryNumber(KeyView key) const;
    Entry* entries() { return m_block->elements<Entry>(); }
    std::size_t capacity() const { return m_block ? m_block->capacity : 0; }
    /// Afterwards this is the only handle of a block with room for `capacity` entries.
    void makeWritable(std::size_t capacity);
    void copyEntries(std::size_t capacity);
    void growForOneMore();

    CollectionBlock* m_block = nullptr;
};

} // namespace plenzo
