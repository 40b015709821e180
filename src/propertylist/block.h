#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

namespace plenzo {

class Value;

/// What every counted heap block begins with.
struct Block {
    std::atomic<std::uint32_t> references{1};

    void retain() { references.fetch_add(1, std::memory_order_relaxed); }
    /// True when that was the last reference.
    bool dropReference() { return references.fetch_sub(1, std::memory_order_acq_rel) == 1; }
    bool isShared() const { return references.load(std::memory_order_acquire) != 1; }
};

/// The text of a string or the bytes of data, which follow the head.
struct BytesBlock : Block {
    std::uint32_t size = 0;

    char* bytes() { return reinterpret_cast<char*>(this + 1); }
};

enum class CollectionKind : std::uint32_t { Array, Dictionary };

/// The head of an array or a dictionary; the elements follow at `elementsOffset`.
struct CollectionBlock : Block {
    std::uint32_t capacity = 0;
    std::uint32_t size = 0;
    CollectionKind kind = CollectionKind::Array;

    static constexpr std::size_t elementsOffset = 16;

    template <typename Element>
    Element* elements() {
        return reinterpret_cast<Element*>(reinterpret_cast<std::byte*>(this) + elementsOffset);
    }
};
static_assert(sizeof(CollectionBlock) == CollectionBlock::elementsOffset);

/// Memory for a block. The program ends when there is none left.
void* allocateBlock(std::size_t byteCount);

/// The block at its new size and perhaps its new place; its contents move along. A null block is a
/// new one, its contents undefined.
void* resizeBlock(void* block, std::size_t byteCount);

void freeBlock(void* block);

/// A block holding a copy of these bytes; at most 2^32 - 1 of them.
BytesBlock* makeBytesBlock(const void* bytes, std::size_t size);

/// Frees a collection whose last reference is gone, and everything that only it held, at any depth
/// of nesting in constant stack.
void destroyCollection(CollectionBlock* block);

} // namespace plenzo
