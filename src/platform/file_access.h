#pragma once

#include "platform/handle.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace plenzo {

/// Access to the files that open-file alarms name, kept from when the host grants it until they are
/// opened. Files go by their paths.
class FileAccess {
public:
    FileAccess() = default;
    FileAccess(const FileAccess&) = delete;
    FileAccess& operator=(const FileAccess&) = delete;
    virtual ~FileAccess() = default;

    enum class CreateIfFileExists { No, Yes };

    /// The file that the host's transport data stands for. Nothing when it cannot be found, or is
    /// another one by now.
    [[nodiscard]] virtual std::optional<std::string>
    secureFileFromTransportData(std::span<const std::byte> transportData) const = 0;
    /// The file at the path, when access to it is kept; else, when it is to be created, the file if
    /// it can be read or the user grants it.
    [[nodiscard]] virtual std::optional<std::string>
    secureFileFromPath(const std::string& path, CreateIfFileExists create) = 0;
    /// Keeps access to the file. False when that failed, or when far too many are kept.
    virtual bool saveSecureFile(const std::string& path) = 0;
    /// To be held by whoever keeps the access to many files: as long as it lives, what is kept is
    /// not written down; then all of it is, at once.
    [[nodiscard]] virtual Handle changeTogether() = 0;
    /// Lets go of the access to files that are gone.
    virtual void cleanSecureFiles() = 0;
    /// To be called around the opening of a file. False when access is no longer granted.
    virtual bool startAccessing(const std::string& path) = 0;
    virtual void stopAccessing(const std::string& path) = 0;
};

} // namespace plenzo
