#pragma once

#include "propertylist/value.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace plenzo {

/// Reads a binary property list, version "bplist00". What several places of the file refer to is
/// read once and shared by them. A key that a dictionary repeats has its last value. Dates are kept
/// as they stand, NaN and infinite ones too; a surrogate without its partner becomes U+FFFD.
///
/// Gives nothing when the bytes are no such file, are cut short or refer to what is not there; when
/// they hold a type that no record has (null, UID, set), an integer beyond 64 bits, or bytes above
/// 127 in an ASCII string; when arrays and dictionaries nest deeper than 512, as they do in a loop;
/// or when the file is built to unfold: a walk over the value, which meets what is shared every
/// time anew, takes at most 16 steps for each byte of the file and 2^32 in all (a step is a value,
/// a key, or 64 bytes of text or data). Memory stays within a small multiple of the file's size.
std::optional<Value> readBinaryPropertyList(std::span<const std::byte> bytes);

/// Writes what `readBinaryPropertyList` reads. What values share is written once, and so are equal
/// strings, numbers, dates and data that follow each other within some ten thousands. Text goes as
/// ASCII or UTF-16; bytes that are not UTF-8 become U+FFFD. Entries and elements that are a colour
/// or Nothing are left out.
///
/// Empty when the value itself is a colour or Nothing, or when the reader would refuse the file
/// because it nests or unfolds too far.
std::vector<std::byte> writeBinaryPropertyList(const Value& value);

} // namespace plenzo
