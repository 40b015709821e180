#pragma once

#include "platform/file_references.h"

namespace plenzo {

/// The files of the file system. A reference holds the inode and the birth time of its file, so
/// that a file that took the place of another is known even by the same name.
class FileReferencesOfSystem final : public FileReferences {
public:
    [[nodiscard]] std::optional<std::vector<std::byte>>
    referenceToFile(const std::string& path) const override;
    [[nodiscard]] ResolvedReference resolve(std::span<const std::byte> reference) const override;
    [[nodiscard]] FileKind kindAtPath(const std::string& path) const override;
    [[nodiscard]] bool isReadable(const std::string& path) const override;
    bool createFolder(const std::string& path) override;
    [[nodiscard]] std::string expandingTilde(const std::string& path) const override;
};

} // namespace plenzo
