#pragma once

#include "propertylist/value.h"

#include <cstddef>
#include <initializer_list>
#include <utility>

namespace plenzo {

/// A sequence of values: a pointer to a counted block, shared by copies until one of them is
/// changed. An empty array needs no block. Holds at most 2^32 - 1 values; more are not added.
class Array {
public:
    Array() = default;
    /// With an array as the only value say `Array{Value(other)}`: compilers disagree on whether
    /// `Array{other}` holds the other one or is a copy of it.
    Array(std::initializer_list<Value> values);
    Array(const Array& other) : m_block(other.m_block) {
        if (m_block != nullptr)
            m_block->retain();
    }
    Array(Array&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    Array& operator=(Array other) noexcept {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~Array() {
        if (m_block != nullptr && m_block->dropReference())
            destroyCollection(m_block);
    }

    std::size_t size() const { return m_block ? m_block->size : 0; }
    bool empty() const { return size() == 0; }
    /// Nothing when the index is beyond the end.
    const Value& operator[](std::size_t index) const;
    const Value* begin() const { return m_block ? m_block->elements<Value>() : nullptr; }
    const Value* end() const { return begin() + size(); }

    /// Makes room for this many values in all, no more.
    void reserve(std::size_t capacity);
    void append(Value value);
    /// Does nothing when the index is beyond the end.
    void set(std::size_t index, Value value);
    void remove(std::size_t index);
    void clear() { *this = Array(); }
    /// To change an element in place. Null when the index is beyond the end.
    Value* findMutable(std::size_t index);

    friend bool operator==(const Array& left, const Array& right);

private:
    friend class Value;

    std::size_t capacity() const { return m_block ? m_block->capacity : 0; }
    /// Afterwards this is the only handle of a block with room for `capacity` values.
    void makeWritable(std::size_t capacity);
    void copyElements(std::size_t capacity);

    CollectionBlock* m_block = nullptr;
};

} // namespace plenzo
