#include "propertylist/block.h"

#include <cstdlib>
#include <cstring>

namespace plenzo {

void* resizeBlock(void* block, std::size_t byteCount) {
    void* memory = std::realloc(block, byteCount);
    if (memory == nullptr)
        std::abort();
    return memory;
}

void* allocateBlock(std::size_t byteCount) {
    return resizeBlock(nullptr, byteCount);
}

void freeBlock(void* block) {
    std::free(block);
}

BytesBlock* makeBytesBlock(const void* bytes, std::size_t size) {
    auto* block = new (allocateBlock(sizeof(BytesBlock) + size)) BytesBlock;
    block->size = static_cast<std::uint32_t>(size);
    if (size != 0)
        std::memcpy(block->bytes(), bytes, size);
    return block;
}

} // namespace plenzo
