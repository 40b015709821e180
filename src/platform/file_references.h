#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

enum class FileKind { None, File, Folder };

enum class ReferenceState {
    Resolved,
    /// Another file has the place of the one that was meant.
    Stale,
    /// No file is there: it was removed or moved. Or the data is no reference.
    NotThere
};

/// What a file reference comes to; the path only when it is resolved.
struct ResolvedReference {
    ReferenceState state = ReferenceState::NotThere;
    std::string path;
};

/// Files and folders by absolute path, and references to them that outlive the program: data that
/// names a path together with the very file that is there. Whatever is no absolute path names
/// nothing.
class FileReferences {
public:
    FileReferences() = default;
    FileReferences(const FileReferences&) = delete;
    FileReferences& operator=(const FileReferences&) = delete;
    virtual ~FileReferences() = default;

    /// Nothing when no file is at the path.
    [[nodiscard]] virtual std::optional<std::vector<std::byte>>
    referenceToFile(const std::string& path) const = 0;
    /// The data may come from anywhere.
    [[nodiscard]] virtual ResolvedReference resolve(std::span<const std::byte> reference) const = 0;
    /// Links are followed; whatever is no folder is a file.
    [[nodiscard]] virtual FileKind kindAtPath(const std::string& path) const = 0;
    [[nodiscard]] virtual bool isReadable(const std::string& path) const = 0;
    /// Makes the folder, but none above it. False when that failed, as when something is there.
    virtual bool createFolder(const std::string& path) = 0;
    /// With the user's home folder in place of a leading "~" that stands alone or before a slash.
    [[nodiscard]] virtual std::string expandingTilde(const std::string& path) const = 0;
};

} // namespace plenzo
