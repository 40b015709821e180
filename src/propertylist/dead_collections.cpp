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
    // Its reference count and capacity are not needed any more.
    static_assert(sizeof(Block) + sizeof(CollectionBlock::capacity) == sizeof(m_first));
    std::memcpy(static_cast<void*>(block), &m_first, sizeof(m_first));
    m_first = block;
}

void DeadCollections::destroyAll() {
    while (m_first != nullptr) {
        CollectionBlock* block = takeFirst();
        destroyElements(block);
        freeBlock(block);
    }
}

CollectionBlock* DeadCollections::takeFirst() {
    CollectionBlock* block = m_first;
    std::memcpy(&m_first, static_cast<void*>(block), sizeof(m_first));
    return block;
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
    auto* block = value.load<Block*>();
    if (block == nullptr || !block->dropReference())
        return;
    if (value.m_kind == Value::Kind::Array || value.m_kind == Value::Kind::Dictionary)
        add(static_cast<CollectionBlock*>(block));
    else
        freeBlock(block);
}

} // namespace plenzo
