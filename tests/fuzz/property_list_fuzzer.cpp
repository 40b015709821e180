// Reads whatever bytes come as a binary property list. What was read must be equal to itself, and
// must come back when it is written and read again.

#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto value = plenzo::readBinaryPropertyList(bytes);
    if (!value)
        return 0;
    // A file may hold more than the value and so let it unfold further than its own bytes would.
    const plenzo::Value padded = plenzo::Array{*value, plenzo::Value::fromData(bytes)};
    const auto written = plenzo::writeBinaryPropertyList(padded);
    const auto again = plenzo::readBinaryPropertyList(written);
    if (!again || !(*again == padded))
        std::abort();
    return 0;
}
