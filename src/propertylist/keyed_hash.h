#pragma once

#include <cstddef>
#include <cstdint>

namespace plenzo {

/// SipHash-1-3 of the bytes under a key that this process drew at random, so that nobody outside
/// can choose texts that fall together in a table.
std::uint64_t keyedHash(const void* bytes, std::size_t size);

} // namespace plenzo
