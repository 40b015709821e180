#include "support/bookmark_stores.h"

#include <memory>
#include <utility>

namespace plenzo {

namespace {

/// More than anybody has, and few enough for the settings to be read and written fast.
constexpr std::size_t mostBookmarks = 20'000;

const char* keyOf(BookmarkStore store) {
    return BookmarkStores::keys[static_cast<std::size_t>(store)];
}

Dictionary withoutGaps(const Dictionary& bookmarks) {
    Dictionary closed;
    closed.reserve(bookmarks.size());
    for (const auto& [path, bookmark] : bookmarks) {
        if (!bookmark.isNothing()) {
            closed.set(path, bookmark);
        }
    }
    return closed;
}

} // namespace

class BookmarkStores::Together final : public Registration {
public:
    explicit Together(BookmarkStores& stores) : m_stores(stores) {}
    Together(const Together&) = delete;
    Together& operator=(const Together&) = delete;
    ~Together() override {
        m_stores.writeHeld(BookmarkStore::Secure);
        m_stores.writeHeld(BookmarkStore::Normal);
    }

private:
    BookmarkStores& m_stores;
};

Dictionary BookmarkStores::stored(BookmarkStore store) const {
    const Value value = m_defaults.valueForKey(keyOf(store));
    const Dictionary* bookmarks = value.dictionary();
    return bookmarks != nullptr ? *bookmarks : Dictionary();
}

void BookmarkStores::write(Dictionary bookmarks, BookmarkStore store) {
    m_defaults.setValues({{keyOf(store), Value(std::move(bookmarks))}});
}

Dictionary BookmarkStores::all(BookmarkStore store) const {
    return held(store) ? withoutGaps(held(store)->bookmarks) : stored(store);
}

void BookmarkStores::setAll(Dictionary bookmarks, BookmarkStore store) {
    if (held(store)) {
        held(store) = Held{.bookmarks = std::move(bookmarks), .isChanged = true};
    } else {
        write(std::move(bookmarks), store);
    }
}

Value BookmarkStores::bookmark(const std::string& path, BookmarkStore store) const {
    // Copying the dictionary's handle would have the next change copy all of it.
    const Dictionary fromSettings = held(store) ? Dictionary() : stored(store);
    const Value* found = held(store) ? held(store)->bookmarks.find(path) : fromSettings.find(path);
    return found != nullptr ? *found : Value();
}

void BookmarkStores::set(const std::string& path, Value bookmark, BookmarkStore store) {
    if (held(store)) {
        held(store)->bookmarks.set(path, std::move(bookmark));
        held(store)->isChanged = true;
        return;
    }
    Dictionary changed = stored(store);
    changed.set(path, std::move(bookmark));
    write(std::move(changed), store);
}

void BookmarkStores::remove(const std::string& path, BookmarkStore store) {
    if (bookmark(path, store).isNothing()) {
        return;
    }
    if (held(store)) {
        set(path, Value(), store);
        return;
    }
    Dictionary changed = stored(store);
    changed.remove(path);
    write(std::move(changed), store);
}

bool BookmarkStores::isFullFor(const std::string& path, BookmarkStore store) const {
    const Dictionary fromSettings = held(store) ? Dictionary() : stored(store);
    const Dictionary& bookmarks = held(store) ? held(store)->bookmarks : fromSettings;
    return bookmarks.size() >= mostBookmarks && !bookmarks.contains(path);
}

Handle BookmarkStores::changeTogether() {
    if (held(BookmarkStore::Secure)) {
        return {};
    }
    for (const BookmarkStore store : {BookmarkStore::Secure, BookmarkStore::Normal}) {
        held(store) = Held{.bookmarks = stored(store), .isChanged = false};
    }
    return std::make_unique<Together>(*this);
}

void BookmarkStores::writeHeld(BookmarkStore store) {
    const auto changed = std::exchange(held(store), std::nullopt);
    if (changed->isChanged) {
        write(withoutGaps(changed->bookmarks), store);
    }
}

} // namespace plenzo
