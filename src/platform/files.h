#pragma once

#include "dates/instant.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// Files as a whole. Each operation happens whole or not at all, whatever interrupts it.
class Files {
public:
    Files() = default;
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    virtual ~Files() = default;

    /// Nothing when the path names no regular file or it cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<std::byte>>
    read(const std::string& path) const = 0;
    /// Whoever reads the file sees its old bytes or the new. Makes the folders above it when they
    /// are missing. False when that failed; the old file is then as it was.
    virtual bool replace(const std::string& path, std::span<const std::byte> bytes) = 0;
    /// When the file was last written, or what setModificationDate() made of it. Nothing when there
    /// is no such file.
    [[nodiscard]] virtual std::optional<Instant>
    modificationDate(const std::string& path) const = 0;
    /// Rounded up to whole microseconds. False when that failed, as for a date that no file can
    /// have.
    virtual bool setModificationDate(const std::string& path, Instant date) = 0;
    /// Gives a file or a folder with all it holds another name on the same volume, replacing a file
    /// (or a folder an empty folder) of that name. Makes the folders above the new name when they
    /// are missing. False when that failed.
    virtual bool move(const std::string& from, const std::string& to) = 0;
    /// Removes a file, or a folder with all it holds. True when there is nothing there afterwards.
    virtual bool remove(const std::string& path) = 0;
};

} // namespace plenzo
