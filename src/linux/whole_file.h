#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// The bytes of a regular file. Nothing when it is not there, is no regular file or cannot be read
/// whole.
[[nodiscard]] std::optional<std::vector<std::byte>> readWholeFile(const std::string& path);

/// Replaces the file by one with these bytes, readable by the user alone, making the folders above
/// it when they are missing. Whoever reads it sees the old bytes or the new, also after a power
/// cut. False when that failed; the old file is then as it was.
bool replaceWholeFile(const std::string& path, std::span<const std::byte> bytes);

/// Makes the folder and those missing above it, open to the user alone (XDG Base Directory asks for
/// mode 0700). False when it is not there afterwards.
bool createPrivateFolders(const std::filesystem::path& folder);

/// Waits until the disk has the names that were given and taken in the folder, so that they are so
/// after a power cut.
void syncFolder(const std::filesystem::path& folder);

/// Gives the file a free name beside its old one: "Name.damaged", "Name.damaged-2", and so on.
/// False when it could not be renamed.
bool setDamagedFileAside(const std::string& path);

} // namespace plenzo
