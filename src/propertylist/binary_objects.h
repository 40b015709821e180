#pragma once

#include "propertylist/binary_output.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace plenzo::binary {

/// The objects of a file as they are written, each behind those it refers to. They are numbered in
/// this order from 1 on; number 0 is kept for the outermost one, which is complete last.
class Objects {
public:
    /// Of a reference as it is first written: how many objects there will be is not known yet.
    static constexpr std::size_t wideReferenceSize = 4;

    Objects();

    Output& output() { return m_output; }
    std::size_t count() const { return m_offsets.size(); }
    /// Where each object begins, by its number.
    std::span<const std::uint64_t> offsets() const { return m_offsets; }
    const std::byte* placeOf(std::uint32_t number) const {
        return m_output.bytes().data() + m_offsets[number];
    }

    /// Numbers the object that begins at this offset and ends the output.
    std::uint32_t add(std::size_t offset) {
        m_offsets.push_back(offset);
        return static_cast<std::uint32_t>(m_offsets.size() - 1);
    }
    /// Makes room for so many times as much as there is, within bounds: what is reserved in vain
    /// is never touched, and memory that is moved has to be cleared anew by the system.
    void expect(std::size_t times);
    /// Gives the last object the number that is kept for it.
    void endWithOutermost();
    /// Makes all references as small as this, in place.
    void narrowReferences(std::size_t referenceSize);

private:
    /// Copies an object to a place before it, its references narrowed; gives the end of the copy.
    std::byte* moveNarrowed(std::span<const std::byte> object, std::byte* place,
                            std::size_t referenceSize);

    Output m_output;
    std::vector<std::uint64_t> m_offsets{0};
};

} // namespace plenzo::binary
