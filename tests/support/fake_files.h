#pragma once

#include "platform/files.h"

#include <map>

namespace plenzo {

/// Files in memory.
class FakeFiles final : public Files {
public:
    [[nodiscard]] std::optional<std::vector<std::byte>>
    read(const std::string& path) const override {
        const auto file = contents.find(path);
        return file != contents.end() ? std::optional(file->second) : std::nullopt;
    }
    bool replace(const std::string& path, std::span<const std::byte> bytes) override {
        if (isFull) {
            return false;
        }
        contents[path] = {bytes.begin(), bytes.end()};
        return true;
    }

    std::map<std::string, std::vector<std::byte>> contents;
    bool isFull = false;
};

} // namespace plenzo
