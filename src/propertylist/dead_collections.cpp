#include "propertylist/dead_collections.h"

#include "propertylist/dictionary.h"

#include <cstring>

namespace plenzo {

void destroyCollection(CollectionBlock* block) {
    DeadCollections dead;
    dead.add(block);
    dead.destroyAll();
}

void DeadCollections::add(CollectionBlock* block) {
    static_assert(sizeof(Block) + sizeof(CollectionBlock::capacity) == sizeof(m_first));
    // Over its reference count and its capacity, which nobody needs any more.
    void* const link = block;
    std::memcpy(link, &m_first, sizeof(m_first));
    m_first = link;
}

void DeadCollections::destroyAll() {
    while (m_first != nullptr) {
        auto* block = static_cast<CollectionBlock*>(m_first);
        std::memcpy(&m_first, m_first, sizeof(m_first));
        destroyElements(block);
        freeBlock(block);
    }
}

void DeadCollections::destroyElements(CollectionBlock* block) {
    if (block->kind == CollectionKind::Array) {
        for (Value* value = block->elements<Value>();
             value != block->elements<Value>() + block->size; ++value)
            discard(*value);
        return;
    }
    auto* entries = block->elements<Dictionary::Entry>();
    for (std::uint32_t number = 0; number < block->size; ++number) {
        entries[number].key.~Key();
        discard(entries[number].value);
    }
}

void DeadCollections::discard(Value& value) {
    if (!value.holdsBlock())
        return;
    Block* block = value.block();
    if (block == nullptr || !block->dropReference())
        return;
    if (value.array() != nullptr || value.dictionary() != nullptr)
        add(static_cast<CollectionBlock*>(block));
    else
        freeBlock(block);
}

} // namespace plenzo
