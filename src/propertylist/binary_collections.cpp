#include "propertylist/binary_collections.h"

#include <algorithm>
#include <utility>

namespace plenzo::binary {

namespace {

/// What a value shares with others; null when it shares nothing or is found as fast by its bytes.
const void* sharedIdentity(const Value& value) {
    constexpr std::size_t shortSize = 64;
    const auto text = value.string();
    return text && text->size() <= shortSize ? nullptr : value.sharedContent();
}

} // namespace

bool Collections::takeUp(const Value& value) {
    return referenceTo(value, 0) != noReference && m_deepest <= maximumDepth &&
           m_collections.size() < collectionBit && m_scalars.offsets().size() < collectionBit;
}

std::span<const std::uint32_t> Collections::referencesOf(const Collection& collection) const {
    const std::size_t perItem = collection.kind == CollectionKind::Array ? 1 : 2;
    return std::span(m_references).subspan(collection.firstReference, perItem * collection.count);
}

std::uint32_t Collections::referenceTo(const Value& value, std::uint32_t depth) {
    const void* identity = sharedIdentity(value);
    if (identity == nullptr)
        return takeUpNew(value, depth);
    if (auto found = m_shared.find(identity); found != m_shared.end()) {
        m_deepest = std::max(m_deepest, depth + found->second.height);
        m_steps += found->second.steps;
        return found->second.reference;
    }
    const std::uint64_t stepsBefore = m_steps;
    const std::uint32_t deepestBefore = std::exchange(m_deepest, depth);
    const std::uint32_t reference = takeUpNew(value, depth);
    if (reference != noReference)
        m_shared[identity] = {reference, m_deepest - depth, m_steps - stepsBefore};
    m_deepest = std::max(m_deepest, deepestBefore);
    return reference;
}

std::uint32_t Collections::takeUpNew(const Value& value, std::uint32_t depth) {
    switch (value.type()) {
    case ValueType::Nothing:
    case ValueType::Color:
        return noReference;
    case ValueType::Array:
    case ValueType::Dictionary:
        return takeUpCollection(value, depth + 1);
    default:
        break;
    }
    const ScalarTable::Added added = m_scalars.add(value);
    m_steps += added.steps;
    return added.number;
}

std::uint32_t Collections::referenceToKey(const Key& key) {
    ScalarTable::Added added;
    if (key.isKnown()) {
        auto& known = m_knownKeys[key.knownNumber()];
        if (!known)
            known = m_scalars.addText(key.name());
        added = *known;
    } else {
        added = m_scalars.addText(key.name());
    }
    m_steps += added.steps;
    return added.number;
}

std::uint32_t Collections::takeUpCollection(const Value& value, std::uint32_t depth) {
    m_deepest = std::max(m_deepest, depth);
    if (depth > maximumDepth)
        return noReference;
    m_steps += 1;
    const std::size_t number = m_collections.size();
    const std::size_t firstCollected = m_collected.size();
    m_collections.emplace_back();
    if (const Array* array = value.array()) {
        collectElements(*array, depth);
        endArray(m_collections[number], firstCollected);
    } else {
        collectEntries(*value.dictionary(), depth);
        endDictionary(m_collections[number], firstCollected);
    }
    m_collected.resize(firstCollected);
    return static_cast<std::uint32_t>(number) | collectionBit;
}

void Collections::collectElements(const Array& array, std::uint32_t depth) {
    for (const Value& element : array)
        if (const std::uint32_t reference = referenceTo(element, depth); reference != noReference)
            m_collected.push_back(reference);
}

void Collections::collectEntries(const Dictionary& dictionary, std::uint32_t depth) {
    for (const auto& [key, value] : dictionary) {
        const std::uint32_t reference = referenceTo(value, depth);
        if (reference == noReference)
            continue;
        m_collected.push_back(referenceToKey(key));
        m_collected.push_back(reference);
    }
}

void Collections::endArray(Collection& collection, std::size_t firstCollected) {
    collection = {CollectionKind::Array, m_collected.size() - firstCollected, m_references.size()};
    m_references.insert(m_references.end(), m_collected.begin() + std::ptrdiff_t(firstCollected),
                        m_collected.end());
}

void Collections::endDictionary(Collection& collection, std::size_t firstCollected) {
    collection = {CollectionKind::Dictionary, (m_collected.size() - firstCollected) / 2,
                  m_references.size()};
    for (std::size_t place = firstCollected; place < m_collected.size(); place += 2)
        m_references.push_back(m_collected[place]);
    for (std::size_t place = firstCollected + 1; place < m_collected.size(); place += 2)
        m_references.push_back(m_collected[place]);
}

} // namespace plenzo::binary
