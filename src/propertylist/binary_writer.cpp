#include "propertylist/binary_collections.h"
#include "propertylist/binary_property_list.h"

namespace plenzo {

namespace binary {

namespace {

/// Writes a whole file: the scalars as they are met, behind them the collections, whose references
/// are numbered when all objects are known. The collections have the lower numbers, and so the
/// outermost is object 0.
class Writer {
public:
    /// Empty when the value cannot be written.
    std::vector<std::byte> write(const Value& value);

private:
    std::uint64_t objectCount() const {
        return m_collections.collections().size() + m_scalars.offsets().size();
    }
    std::uint64_t objectNumber(std::uint32_t reference) const;
    void writeCollections();
    void writeOffsets();
    void writeTrailer(std::uint64_t tableOffset);

    Output m_output;
    ScalarTable m_scalars{m_output};
    Collections m_collections{m_scalars};
    std::size_t m_referenceSize = 0;
    std::size_t m_offsetSize = 0;
    std::vector<std::uint64_t> m_collectionOffsets;
};

std::vector<std::byte> Writer::write(const Value& value) {
    m_output.writeBytes(std::as_bytes(std::span(magic)));
    if (!m_collections.takeUp(value))
        return {};
    // Some readers want the sizes to hold the count and the table's own offset.
    m_referenceSize = fittingSize(objectCount());
    writeCollections();
    const std::uint64_t tableOffset = m_output.size();
    m_offsetSize = fittingSize(tableOffset);
    writeOffsets();
    writeTrailer(tableOffset);
    if (m_collections.steps() > maximumSteps(m_output.size()))
        return {};
    return m_output.take();
}

std::uint64_t Writer::objectNumber(std::uint32_t reference) const {
    if ((reference & Collections::collectionBit) != 0)
        return reference & ~Collections::collectionBit;
    return m_collections.collections().size() + reference;
}

void Writer::writeCollections() {
    for (const Collections::Collection& collection : m_collections.collections()) {
        m_collectionOffsets.push_back(m_output.size());
        m_output.writeMarker(collection.kind == CollectionKind::Array ? Marker::Array
                                                                      : Marker::Dictionary,
                             collection.count);
        const auto references = m_collections.referencesOf(collection);
        m_output.writeIntegers(references.size(), m_referenceSize, [&](std::size_t number) {
            return objectNumber(references[number]);
        });
    }
}

void Writer::writeOffsets() {
    m_output.writeIntegers(m_collectionOffsets.size(), m_offsetSize,
                           [&](std::size_t number) { return m_collectionOffsets[number]; });
    m_output.writeIntegers(m_scalars.offsets().size(), m_offsetSize,
                           [&](std::size_t number) { return m_scalars.offsets()[number]; });
}

void Writer::writeTrailer(std::uint64_t tableOffset) {
    constexpr std::uint64_t topObject = 0;
    m_output.writeInteger(0, trailerSize - 26); // unused
    m_output.writeInteger(m_offsetSize, 1);
    m_output.writeInteger(m_referenceSize, 1);
    m_output.writeInteger(objectCount(), 8);
    m_output.writeInteger(topObject, 8);
    m_output.writeInteger(tableOffset, 8);
}

} // namespace

} // namespace binary

std::vector<std::byte> writeBinaryPropertyList(const Value& value) {
    return binary::Writer().write(value);
}

} // namespace plenzo
