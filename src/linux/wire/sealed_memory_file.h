#pragma once

#include "linux/wire/file_descriptor.h"
#include "propertylist/value.h"

#include <cstddef>
#include <optional>
#include <span>

namespace plenzo {

/// A memory file with these bytes, sealed so that nobody can change or cut it any more; its
/// descriptor can be passed to another process. Nothing when there are no bytes or the system has
/// no memory for them.
[[nodiscard]] std::optional<FileDescriptor> sealedMemoryFile(std::span<const std::byte> bytes);

/// The binary property list in a sealed memory file. Nothing when the descriptor is anything else
/// (a pipe, a socket, a folder, a file on disk, a memory file that can still be written or cut, one
/// with holes, whose reading would take memory that its sender never spent) or the bytes are no
/// property list. Never waits for a sender. The descriptor stays open and its position unchanged.
[[nodiscard]] std::optional<Value> readSealedMemoryFile(int descriptor);

} // namespace plenzo
