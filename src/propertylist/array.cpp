#include "propertylist/array.h"

#include <algorithm>
#include <memory>
#include <new>

namespace plenzo {

namespace {

constinit const Value nothing;

std::size_t blockSize(std::size_t capacity) {
    return CollectionBlock::elementsOffset + capacity * sizeof(Value);
}

CollectionBlock* newBlock(std::size_t capacity) {
    auto* block = new (allocateBlock(blockSize(capacity))) CollectionBlock;
    block->capacity = static_cast<std::uint32_t>(capacity);
    return block;
}

} // namespace

Array::Array(std::initializer_list<Value> values) {
    reserve(values.size());
    for (const Value& value : values)
        append(value);
}

const Value& Array::operator[](std::size_t index) const {
    return index < size() ? begin()[index] : nothing;
}

void Array::reserve(std::size_t capacity) {
    if (capacity > size() && capacity <= UINT32_MAX)
        makeWritable(capacity);
}

void Array::append(Value value) {
    const std::size_t count = size();
    if (count == UINT32_MAX)
        return;
    makeWritable(count < capacity() ? capacity()
                                    : std::min<std::size_t>(count + count / 2 + 4, UINT32_MAX));
    new (m_block->elements<Value>() + count) Value(std::move(value));
    ++m_block->size;
}

void Array::set(std::size_t index, Value value) {
    if (Value* element = findMutable(index))
        *element = std::move(value);
}

void Array::remove(std::size_t index) {
    Value* element = findMutable(index);
    if (element == nullptr)
        return;
    std::move(element + 1, m_block->elements<Value>() + m_block->size, element);
    m_block->elements<Value>()[--m_block->size].~Value();
}

Value* Array::findMutable(std::size_t index) {
    if (index >= size())
        return nullptr;
    makeWritable(capacity());
    return m_block->elements<Value>() + index;
}

void Array::makeWritable(std::size_t capacity) {
    if (m_block == nullptr) {
        m_block = newBlock(capacity);
    } else if (m_block->isShared()) {
        copyElements(capacity);
    } else if (capacity > m_block->capacity) {
        m_block = static_cast<CollectionBlock*>(resizeBlock(m_block, blockSize(capacity)));
        m_block->capacity = static_cast<std::uint32_t>(capacity);
    }
}

void Array::copyElements(std::size_t capacity) {
    Array copy;
    copy.m_block = newBlock(capacity);
    copy.m_block->size = m_block->size;
    std::uninitialized_copy(begin(), end(), copy.m_block->elements<Value>());
    std::swap(m_block, copy.m_block);
}

} // namespace plenzo
