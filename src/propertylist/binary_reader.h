#pragma once

#include "propertylist/binary_object_table.h"
#include "propertylist/dictionary.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace plenzo::binary {

/// Reads the values of one file. Keeps what it has read of strings, data, arrays and dictionaries,
/// so that an object is read once and shared from then on.
class Reader {
public:
    Reader(const ObjectTable& table, std::size_t fileSize);

    /// Nothing when the file is to be refused; no value of a file is Nothing.
    Value read() { return objectValue(m_table.topObject(), 0); }

private:
    /// An object as it was read the first time.
    struct Known {
        Value value;
        std::uint32_t steps = 0;
        std::uint32_t height = 0;
    };

    struct KnownKey {
        Key key;
        std::uint64_t steps;
    };
    static constexpr std::uint32_t noKey = UINT32_MAX;

    Value objectValue(std::size_t objectNumber, std::uint32_t depth);
    Value knownValue(const Known& known, std::uint32_t depth);
    Value newValue(const ObjectHead& head, Known& known, std::uint32_t depth);
    Value newBytesValue(const ObjectHead& head, Known& known);
    Value collection(const ObjectHead& head, Known& known, std::uint32_t depth);
    Value array(const ObjectHead& head, std::uint32_t depth);
    Value dictionary(const ObjectHead& head, std::uint32_t depth);
    /// The place in `m_keys`, or `noKey` when the object is no string.
    std::uint32_t keyNumberOf(std::size_t objectNumber);
    bool addKey(const ObjectHead& head);

    /// False when a walk over the value would take too many steps.
    bool takeSteps(std::uint64_t steps);
    /// False when more has been read than the file holds, which is when objects overlap. A text may
    /// be read twice, as a key and as a value.
    bool takeBytes(std::uint64_t byteCount);

    const ObjectTable& m_table;
    std::uint64_t m_stepsLeft;
    std::uint64_t m_bytesLeft;
    std::uint32_t m_deepest = 0;
    std::vector<Known> m_known;
    /// By object number: the place in `m_keys`, or `noKey`.
    std::vector<std::uint32_t> m_keyNumbers;
    std::vector<KnownKey> m_keys;
};

} // namespace plenzo::binary
