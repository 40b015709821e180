#pragma once

#include "propertylist/binary_object_table.h"
#include "propertylist/binary_output.h"
#include "propertylist/value.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The objects that hold no others, to and from bytes.
namespace plenzo::binary {

/// The value of a number, a date or a boolean; Nothing for an integer beyond 64 bits and for what
/// is none of these.
Value scalarValue(const ObjectHead& head);

/// The value of a string or data; Nothing when an ASCII string is none.
Value bytesValue(const ObjectHead& head);

/// How many bytes the content of a string or data takes.
std::uint64_t byteCount(const ObjectHead& head);

/// Writes a string, number, boolean, date or data; gives the size of its content in bytes.
std::size_t writeScalar(Output& output, const Value& value);

/// Likewise of a string.
std::size_t writeText(Output& output, std::string_view text);

} // namespace plenzo::binary
