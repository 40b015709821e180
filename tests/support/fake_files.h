#pragma once

#include "platform/clock.h"
#include "platform/files.h"

#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace plenzo {

/// Files and folders in memory. A test may make them fail, or cut the power after any change, to
/// see what a program finds that starts again over what is left.
class FakeFiles final : public Files {
public:
    /// The clock tells when a file is written.
    explicit FakeFiles(const Clock& clock) : m_clock(clock), m_start(clock.now()) {}

    [[nodiscard]] std::optional<std::vector<std::byte>>
    read(const std::string& path) const override {
        const auto file = contents.find(path);
        return file != contents.end() && m_changesLeft > 0 ? std::optional(file->second)
                                                           : std::nullopt;
    }
    bool replace(const std::string& path, std::span<const std::byte> bytes) override {
        if (!mayChange() || isFull || isFolder(path) || !makeFoldersAbove(path)) {
            return false;
        }
        contents[path] = {bytes.begin(), bytes.end()};
        m_dates[path] = m_clock.now();
        return true;
    }
    [[nodiscard]] std::optional<Instant> modificationDate(const std::string& path) const override {
        if (!contents.contains(path) || m_changesLeft == 0) {
            return std::nullopt;
        }
        const auto date = m_dates.find(path);
        return date != m_dates.end() ? date->second : m_start;
    }
    bool setModificationDate(const std::string& path, Instant date) override {
        if (!mayChange() || !contents.contains(path) || !date.isReadable()) {
            return false;
        }
        const double seconds = std::floor(date.secondsSinceReferenceDate());
        const double fraction = date.secondsSinceReferenceDate() - seconds;
        m_dates[path] = Instant(seconds + std::ceil(fraction * 1e6) / 1e6);
        return true;
    }
    bool move(const std::string& from, const std::string& to) override {
        if (!mayChange() || !mayTakeTheNameOf(from, to) || !makeFoldersAbove(to)) {
            return false;
        }
        if (from != to) {
            renameAll(contents, from, to);
            renameAll(m_dates, from, to);
            renameAll(m_folders, from, to);
        }
        return true;
    }
    bool remove(const std::string& path) override {
        if (!mayChange()) {
            return false;
        }
        eraseAll(contents, path);
        eraseAll(m_dates, path);
        eraseAll(m_folders, path);
        return true;
    }

    /// Cuts the power after that many further changes, failed ones included: then every operation
    /// fails and nothing changes any more, until the power is back.
    void losePowerAfter(int changes) { m_changesLeft = changes; }
    void restorePower() { m_changesLeft = endless; }
    [[nodiscard]] bool hasPower() const { return m_changesLeft > 0; }

    /// How many changes were asked for so far.
    int changeCount = 0;
    /// The files by path. One that a test puts here itself was written when the fake was made.
    std::map<std::string, std::vector<std::byte>> contents;
    /// Nothing can be written; what is there can be moved and removed.
    bool isFull = false;
    /// Every change fails.
    bool isReadOnly = false;

private:
    static constexpr int endless = std::numeric_limits<int>::max();

    static bool isBelow(const std::string& path, const std::string& folder) {
        return path.starts_with(folder + "/");
    }

    /// Counts the change that is to come.
    bool mayChange() {
        if (m_changesLeft == 0) {
            return false;
        }
        ++changeCount;
        m_changesLeft -= m_changesLeft == endless ? 0 : 1;
        return !isReadOnly;
    }
    [[nodiscard]] bool holdsSomething(const std::string& folder) const {
        const auto first = contents.lower_bound(folder + "/");
        const auto firstFolder = m_folders.lower_bound(folder + "/");
        return (first != contents.end() && isBelow(first->first, folder)) ||
               (firstFolder != m_folders.end() && isBelow(firstFolder->first, folder));
    }
    [[nodiscard]] bool isFolder(const std::string& path) const {
        return m_folders.contains(path) || holdsSomething(path);
    }
    [[nodiscard]] bool mayTakeTheNameOf(const std::string& from, const std::string& to) const {
        if (from == to) {
            return contents.contains(from) || isFolder(from);
        }
        if (isFolder(from)) {
            return !contents.contains(to) && !holdsSomething(to) && !isBelow(to, from);
        }
        return contents.contains(from) && !isFolder(to);
    }
    /// False when a file is in the way; then nothing was made.
    bool makeFoldersAbove(const std::string& path) {
        std::map<std::string, Instant> above;
        for (auto end = path.rfind('/'); end != std::string::npos && end > 0;
             end = path.rfind('/', end - 1)) {
            above.emplace(path.substr(0, end), m_clock.now());
            if (contents.contains(path.substr(0, end))) {
                return false;
            }
        }
        m_folders.merge(above);
        return !path.empty();
    }

    template <typename Item>
    static void eraseAll(std::map<std::string, Item>& items, const std::string& path) {
        std::erase_if(items, [&path](const auto& item) {
            return item.first == path || isBelow(item.first, path);
        });
    }
    template <typename Item>
    static void renameAll(std::map<std::string, Item>& items, const std::string& from,
                          const std::string& to) {
        std::map<std::string, Item> renamed;
        for (auto& [path, item] : items) {
            if (path == from || isBelow(path, from)) {
                renamed.emplace(to + path.substr(from.size()), std::move(item));
            }
        }
        eraseAll(items, from);
        eraseAll(items, to);
        items.merge(renamed);
    }

    const Clock& m_clock;
    Instant m_start;
    std::map<std::string, Instant> m_dates;
    std::map<std::string, Instant> m_folders;
    int m_changesLeft = endless;
};

} // namespace plenzo
