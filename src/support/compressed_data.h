#pragma once

#include "platform/files.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

// A block of bytes compressed with zlib (RFC 1950), in a container:
//
//   E bytes   room for a header of the caller's, zero; E is 0 unless asked for
//   4 bytes   the uncompressed length, big-endian
//   the rest  one zlib stream of all the bytes
//
// Reading expects E to be 0: who asked for room takes it off first. Blocks of 4 GiB and more are
// not supported. All operations give nothing, or false and change nothing, when they fail.

using Bytes = std::vector<std::byte>;

/// The container of the bytes. The level is 0 (stored) to 9 (smallest), or -1 for zlib's own
/// choice; above 9 counts as 9, below -1 as 0.
[[nodiscard]] std::optional<Bytes> compressedDataWithLevel(std::span<const std::byte> bytes,
                                                           int level, std::size_t extraHeaderBytes);

/// With zlib's own choice of level and no room for a header.
[[nodiscard]] std::optional<Bytes> compressedData(std::span<const std::byte> bytes);

/// The bytes of a container. What its length field says is the most that is read; more makes it
/// nothing, and so do damaged and missing bytes. Takes memory for what the stream can hold, not for
/// what the length field promises.
[[nodiscard]] std::optional<Bytes> uncompressedData(std::span<const std::byte> container);

/// The container of a file's bytes, as small as zlib makes it. Nothing when the file cannot be
/// read.
[[nodiscard]] std::optional<Bytes> compressedDataWithFile(const Files& files,
                                                          const std::string& path);

/// Writes the bytes of a container to a file, replaced whole.
[[nodiscard]] bool writeUncompressedDataToFile(Files& files, std::span<const std::byte> container,
                                               const std::string& path);

/// Replaces the buffer's contents by the container of them.
[[nodiscard]] bool compress(Bytes& buffer);

/// Replaces the container in the buffer by its contents.
[[nodiscard]] bool uncompress(Bytes& buffer);

} // namespace plenzo
