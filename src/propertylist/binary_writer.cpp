#include "propertylist/binary_collections.h"
#include "propertylist/binary_property_list.h"

namespace plenzo {

namespace binary {

namespace {

/// Writes a whole file. How many objects there are is known when they are written; only then are
/// the references of a small file narrowed.
class Writer {
public:
    /// Empty when the value cannot be written.
    std::vector<std::byte> write(const Value& value);

private:
    void writeTrailer(std::uint64_t tableOffset);

    Objects m_objects;
    Output& m_output = m_objects.output();
    ScalarTable m_scalars{m_objects};
    Collections m_collections{m_objects, m_scalars};
    std::size_t m_referenceSize = 0;
    std::size_t m_offsetSize = 0;
};

std::vector<std::byte> Writer::write(const Value& value) {
    if (!m_collections.write(value)) {
        return {};
    }
    // Some readers want the sizes to hold the count and the table's own offset.
    m_referenceSize = fittingSize(m_objects.count());
    if (m_referenceSize < Objects::wideReferenceSize) {
        m_objects.narrowReferences(m_referenceSize);
    }
    const std::uint64_t tableOffset = m_output.size();
    m_offsetSize = fittingSize(tableOffset);
    m_output.writeIntegers(m_objects.count(), m_offsetSize,
                           [&](std::size_t number) { return m_objects.offsets()[number]; });
    writeTrailer(tableOffset);
    if (m_collections.steps() > maximumSteps(m_output.size())) {
        return {};
    }
    return m_output.take();
}

void Writer::writeTrailer(std::uint64_t tableOffset) {
    constexpr std::uint64_t topObject = 0;
    m_output.writeInteger(0, trailerSize - 26); // unused
    m_output.writeInteger(m_offsetSize, 1);
    m_output.writeInteger(m_referenceSize, 1);
    m_output.writeInteger(m_objects.count(), 8);
    m_output.writeInteger(topObject, 8);
    m_output.writeInteger(tableOffset, 8);
}

} // namespace

} // namespace binary

std::vector<std::byte> writeBinaryPropertyList(const Value& value) {
    return binary::Writer().write(value);
}

} // namespace plenzo
