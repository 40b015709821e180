#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// Files as a whole.
class Files {
public:
    Files() = default;
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    virtual ~Files() = default;

    /// Nothing when the path names no regular file or it cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<std::byte>>
    read(const std::string& path) const = 0;
    /// Whoever reads the file sees its old bytes or the new. False when that failed; the old file
    /// is then as it was.
    virtual bool replace(const std::string& path, std::span<const std::byte> bytes) = 0;
};

} // namespace plenzo
