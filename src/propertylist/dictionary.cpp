#include "propertylist/dictionary.h"

#include "propertylist/dictionary_index.h"

#include <algorithm>
#include <memory>
#include <new>

namespace plenzo {

namespace {

constexpr std::size_t maximumCapacity = std::size_t{1} << 31;

bool isSmall(const CollectionBlock& block) {
    return DictionaryIndex::slotCount(block.capacity) == 0;
}

void rebuildIndex(CollectionBlock& block) {
    if (!isSmall(block))
        DictionaryIndex(block).rebuild();
}

CollectionBlock* newBlock(std::size_t capacity) {
    auto* block = new (allocateBlock(DictionaryIndex::blockSize(capacity))) CollectionBlock;
    block->kind = CollectionKind::Dictionary;
    block->capacity = static_cast<std::uint32_t>(capacity);
    rebuildIndex(*block);
    return block;
}

} // namespace

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
    reserve(entries.size());
    for (const Entry& entry : entries)
        set(entry.key, entry.value);
}

bool Dictionary::isIndexed() const {
    return m_block != nullptr && !isSmall(*m_block);
}

void Dictionary::reserve(std::size_t capacity) {
    if (capacity > size() && capacity <= maximumCapacity)
        makeWritable(capacity);
}

std::size_t Dictionary::entryNumber(KeyView key) const {
    if (m_block == nullptr)
        return absent;
    if (!isSmall(*m_block))
        return DictionaryIndex(*m_block).find(key);
    const auto found =
        key.isKnown() ? std::find_if(begin(), end(),
                                     [&](const Entry& entry) { return key.isSameKnown(entry.key); })
                      : std::find_if(begin(), end(),
                                     [&](const Entry& entry) { return key.matches(entry.key); });
    return found == end() ? absent : static_cast<std::size_t>(found - begin());
}

const Value* Dictionary::find(KeyView key) const {
    const std::size_t number = entryNumber(key);
    return number == absent ? nullptr : &begin()[number].value;
}

Value* Dictionary::findMutable(KeyView key) {
    const std::size_t number = entryNumber(key);
    if (number == absent)
        return nullptr;
    makeWritable(capacity());
    return &entries()[number].value;
}

void Dictionary::set(Key key, Value value) {
    if (Value* present = findMutable(key)) {
        *present = std::move(value);
        return;
    }
    const std::size_t number = size();
    if (number == maximumCapacity)
        return;
    growForOneMore();
    new (entries() + number) Entry{std::move(key), std::move(value)};
    ++m_block->size;
    if (!isSmall(*m_block))
        DictionaryIndex(*m_block).add(number);
}

void Dictionary::remove(KeyView key) {
    const std::size_t number = entryNumber(key);
    if (number == absent)
        return;
    makeWritable(capacity());
    std::move(entries() + number + 1, entries() + size(), entries() + number);
    entries()[--m_block->size].~Entry();
    rebuildIndex(*m_block);
}

void Dictionary::growForOneMore() {
    const std::size_t count = size();
    const std::size_t grown = std::min(count + count / 2 + 4, maximumCapacity);
    // A small one stays small as long as it can.
    const bool fitsSmall = count < DictionaryIndex::largestSmallCapacity;
    const std::size_t wanted =
        fitsSmall ? std::min(grown, DictionaryIndex::largestSmallCapacity) : grown;
    makeWritable(count < capacity() ? capacity() : wanted);
}

void Dictionary::makeWritable(std::size_t capacity) {
    if (m_block == nullptr) {
        m_block = newBlock(capacity);
    } else if (m_block->isShared()) {
        copyEntries(capacity);
    } else if (capacity > m_block->capacity) {
        m_block = static_cast<CollectionBlock*>(
            resizeBlock(m_block, DictionaryIndex::blockSize(capacity)));
        m_block->capacity = static_cast<std::uint32_t>(capacity);
        rebuildIndex(*m_block);
    }
}

void Dictionary::copyEntries(std::size_t capacity) {
    Dictionary copy;
    copy.m_block = newBlock(capacity);
    copy.m_block->size = m_block->size;
    std::uninitialized_copy(begin(), end(), copy.entries());
    rebuildIndex(*copy.m_block);
    std::swap(m_block, copy.m_block);
}

} // namespace plenzo
