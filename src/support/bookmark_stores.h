#pragma once

#include "platform/handle.h"
#include "platform/user_defaults.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace plenzo {

enum class BookmarkStore { Secure, Normal };

/// The two dictionaries of the settings that hold bookmark data by path. Every change copies and
/// writes a dictionary whole; many changes together do so once.
class BookmarkStores {
public:
    /// The settings in which the bookmarks are, by store: nobody else's.
    static constexpr std::array<const char*, 2> keys{"secureBookmarks", "normalBookmarks"};

    explicit BookmarkStores(UserDefaults& defaults) : m_defaults(defaults) {}

    [[nodiscard]] Dictionary all(BookmarkStore store) const;
    void setAll(Dictionary bookmarks, BookmarkStore store);
    /// Nothing when there is none at the path.
    [[nodiscard]] Value bookmark(const std::string& path, BookmarkStore store) const;
    void set(const std::string& path, Value bookmark, BookmarkStore store);
    void remove(const std::string& path, BookmarkStore store);
    /// Whether there are so many bookmarks that the path would be one too many.
    [[nodiscard]] bool isFullFor(const std::string& path, BookmarkStore store) const;

    /// As long as the handle lives, changes stay in memory; then they are written at once. Empty
    /// when there is such a handle already. Must not outlive the stores.
    [[nodiscard]] Handle changeTogether();

private:
    class Together;

    /// What is removed stays in its place as nothing, since to close the gap takes as long as to
    /// copy the dictionary.
    struct Held {
        Dictionary bookmarks;
        bool isChanged = false;
    };

    [[nodiscard]] Dictionary stored(BookmarkStore store) const;
    void write(Dictionary bookmarks, BookmarkStore store);
    [[nodiscard]] std::optional<Held>& held(BookmarkStore store) {
        return m_held[static_cast<std::size_t>(store)];
    }
    [[nodiscard]] const std::optional<Held>& held(BookmarkStore store) const {
        return m_held[static_cast<std::size_t>(store)];
    }
    void writeHeld(BookmarkStore store);

    UserDefaults& m_defaults;
    std::array<std::optional<Held>, 2> m_held;
};

} // namespace plenzo
