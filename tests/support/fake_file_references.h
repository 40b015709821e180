#pragma once

#include "platform/file_references.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace plenzo {

/// Files and folders in memory, without contents. A reference is the number of the file, a colon
/// and its path; the home folder is /home/ana.
class FakeFileReferences final : public FileReferences {
public:
    [[nodiscard]] std::optional<std::vector<std::byte>>
    referenceToFile(const std::string& path) const override {
        const auto file = m_files.find(path);
        if (file == m_files.end() || refusesReferences) {
            return std::nullopt;
        }
        return bytes(std::to_string(file->second.number) + ":" + path);
    }
    [[nodiscard]] ResolvedReference resolve(std::span<const std::byte> reference) const override {
        const std::string text(reinterpret_cast<const char*>(reference.data()), reference.size());
        const std::string path = text.substr(std::min(text.find(':'), text.size() - 1) + 1);
        if (!m_files.contains(path)) {
            return {};
        }
        return referenceToFile(path) == bytes(text)
                   ? ResolvedReference{.state = ReferenceState::Resolved, .path = path}
                   : ResolvedReference{.state = ReferenceState::Stale, .path = {}};
    }
    [[nodiscard]] FileKind kindAtPath(const std::string& path) const override {
        const auto file = m_files.find(path);
        return file != m_files.end() ? file->second.kind : FileKind::None;
    }
    [[nodiscard]] bool isReadable(const std::string& path) const override {
        return m_files.contains(path) && !unreadable.contains(path);
    }
    bool createFolder(const std::string& path) override {
        const std::string above = path.substr(0, std::min(path.rfind('/'), path.size()));
        const bool isMade = kindAtPath(above) == FileKind::Folder && !m_files.contains(path);
        if (isMade) {
            put(path, FileKind::Folder);
        }
        return isMade;
    }
    [[nodiscard]] std::string expandingTilde(const std::string& path) const override {
        return path == "~" || path.starts_with("~/") ? "/home/ana" + path.substr(1) : path;
    }

    /// Puts a new file there, in place of what was there.
    void put(const std::string& path, FileKind kind = FileKind::File) {
        m_files[path] = {.kind = kind, .number = ++m_fileCount};
    }
    void move(const std::string& from, const std::string& to) {
        m_files[to] = m_files.at(from);
        m_files.erase(from);
    }
    void remove(const std::string& path) { m_files.erase(path); }

    std::set<std::string> unreadable;
    bool refusesReferences = false;

private:
    struct File {
        FileKind kind = FileKind::None;
        int number = 0;
    };

    static std::vector<std::byte> bytes(const std::string& text) {
        const auto view = std::as_bytes(std::span(text));
        return {view.begin(), view.end()};
    }

    std::map<std::string, File> m_files;
    int m_fileCount = 0;
};

} // namespace plenzo
