#pragma once

#include "platform/files.h"

namespace plenzo {

/// The files of the file system. What replaces a file, and each new name, is on the disk when the
/// call returns.
class FilesOnDisk final : public Files {
public:
    [[nodiscard]] std::optional<std::vector<std::byte>>
    read(const std::string& path) const override;
    bool replace(const std::string& path, std::span<const std::byte> bytes) override;
    [[nodiscard]] std::optional<Instant> modificationDate(const std::string& path) const override;
    bool setModificationDate(const std::string& path, Instant date) override;
    bool move(const std::string& from, const std::string& to) override;
    bool remove(const std::string& path) override;
};

} // namespace plenzo
