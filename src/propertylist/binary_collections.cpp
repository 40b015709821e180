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

bool Collections::write(const Value& value) {
    if (referenceTo(value, 0) == noReference || m_deepest > maximumDepth ||
        m_objects.count() >= noReference) {
        return false;
    }
    m_objects.endWithOutermost();
    return true;
}

std::uint32_t Collections::referenceTo(const Value& value, std::uint32_t depth) {
    const void* identity = sharedIdentity(value);
    if (identity == nullptr) {
        return writeNew(value, depth);
    }
    if (const SharedValues::Entry* known = m_shared.find(identity)) {
        m_deepest = std::max(m_deepest, depth + known->height);
        m_steps += known->steps;
        return known->reference;
    }
    const std::uint64_t stepsBefore = m_steps;
    const std::uint32_t deepestBefore = std::exchange(m_deepest, depth);
    const std::uint32_t reference = writeNew(value, depth);
    if (reference != noReference) {
        m_shared.add({identity, reference, m_deepest - depth, m_steps - stepsBefore});
    }
    m_deepest = std::max(m_deepest, deepestBefore);
    return reference;
}

std::uint32_t Collections::writeNew(const Value& value, std::uint32_t depth) {
    switch (value.type()) {
    case ValueType::Nothing:
    case ValueType::Color:
        return noReference;
    case ValueType::Array:
    case ValueType::Dictionary:
        return writeCollection(value, depth + 1);
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
        if (!known) {
            known = m_scalars.addText(key.name());
        }
        added = *known;
    } else {
        added = m_scalars.addText(key.name());
    }
    m_steps += added.steps;
    return added.number;
}

std::uint32_t Collections::writeCollection(const Value& value, std::uint32_t depth) {
    m_deepest = std::max(m_deepest, depth);
    if (depth > maximumDepth) {
        return noReference;
    }
    m_steps += 1;
    const std::size_t firstCollected = m_collected.size();
    const Array* array = value.array();
    if (array != nullptr) {
        collectElements(*array, depth);
    } else {
        collectEntries(*value.dictionary(), depth);
    }
    const std::size_t offset = m_objects.output().size();
    const auto references = std::span(m_collected).subspan(firstCollected);
    if (array != nullptr) {
        writeArray(references);
    } else {
        writeDictionary(references);
    }
    m_collected.resize(firstCollected);
    return m_objects.add(offset);
}

void Collections::collectElements(const Array& array, std::uint32_t depth) {
    // By the first of many records it is known how much the others will take.
    constexpr std::size_t sampleShare = 16;
    constexpr std::size_t many = 1024;
    const std::size_t sampleSize =
        depth == 1 && array.size() >= many ? array.size() / sampleShare : SIZE_MAX;
    for (std::size_t number = 0; number < array.size(); ++number) {
        if (number == sampleSize) {
            m_objects.expect(sampleShare);
        }
        const std::uint32_t reference = referenceTo(array.begin()[number], depth);
        if (reference != noReference) {
            m_collected.push_back(reference);
        }
    }
}

void Collections::collectEntries(const Dictionary& dictionary, std::uint32_t depth) {
    for (const auto& [key, value] : dictionary) {
        const std::uint32_t reference = referenceTo(value, depth);
        if (reference == noReference) {
            continue;
        }
        m_collected.push_back(referenceToKey(key));
        m_collected.push_back(reference);
    }
}

void Collections::writeArray(std::span<const std::uint32_t> references) {
    Output& output = m_objects.output();
    output.writeMarker(Marker::Array, references.size());
    output.writeIntegers(references.size(), Objects::wideReferenceSize,
                         [&](std::size_t number) { return references[number]; });
}

void Collections::writeDictionary(std::span<const std::uint32_t> references) {
    Output& output = m_objects.output();
    const std::size_t count = references.size() / 2;
    output.writeMarker(Marker::Dictionary, count);
    output.writeIntegers(references.size(), Objects::wideReferenceSize, [&](std::size_t number) {
        return number < count ? references[2 * number] : references[2 * (number - count) + 1];
    });
}

} // namespace plenzo::binary
