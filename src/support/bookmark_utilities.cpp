#include "support/bookmark_utilities.h"

#include "support/access_request.h"

#include <utility>

namespace plenzo {

BookmarkUtilities::BookmarkUtilities(Collaborators collaborators)
    : m_collaborators(std::move(collaborators)), m_stores(m_collaborators.defaults) {}

bool BookmarkUtilities::addBookmarkForFileURL(const std::string& path, Store store) {
    const auto reference = m_collaborators.references.referenceToFile(path);
    if (!reference) {
        return false;
    }
    m_stores.set(path, Value::fromData(*reference), store);
    return true;
}

bool BookmarkUtilities::addSecureBookmark(const std::string& path) {
    return addBookmarkForFileURL(path, Store::Secure);
}

bool BookmarkUtilities::addNormalBookmark(const std::string& path) {
    return addBookmarkForFileURL(path, Store::Normal);
}

std::optional<std::string> BookmarkUtilities::getFileURLFromBookmarkPath(const std::string& path,
                                                                         Store store) {
    const Value bookmark = m_stores.bookmark(path, store);
    if (bookmark.isNothing()) {
        return std::nullopt;
    }
    const auto reference = bookmark.data().value_or(std::span<const std::byte>());
    ResolvedReference resolved = m_collaborators.references.resolve(reference);
    if (resolved.state != ReferenceState::Resolved) {
        removeBookmarkWithPath(path, store);
        return std::nullopt;
    }
    if (store == Store::Secure) {
        noteURLExpandedFromSecureBookmark(resolved.path);
    }
    return std::move(resolved.path);
}

std::optional<std::string> BookmarkUtilities::getSecureBookmark(const std::string& path) {
    return getFileURLFromBookmarkPath(path, Store::Secure);
}

std::optional<std::string> BookmarkUtilities::getNormalBookmark(const std::string& path) {
    return getFileURLFromBookmarkPath(path, Store::Normal);
}

void BookmarkUtilities::removeBookmarkWithPath(const std::string& path, Store store) {
    m_stores.remove(path, store);
    clearExpandedURLWithPath(path);
}

void BookmarkUtilities::removeSecureBookmark(const std::string& path) {
    removeBookmarkWithPath(path, Store::Secure);
}

void BookmarkUtilities::removeNormalBookmark(const std::string& path) {
    removeBookmarkWithPath(path, Store::Normal);
}

bool BookmarkUtilities::saveSecureFileURL(const std::string& path, PreferAppScoped prefer) {
    return (prefer == PreferAppScoped::Yes && addSecureBookmark(path)) || addNormalBookmark(path);
}

void BookmarkUtilities::removeSecureFileURLWithPath(const std::string& path) {
    removeSecureBookmark(path);
    removeNormalBookmark(path);
}

std::optional<std::string> BookmarkUtilities::secureFileURLFromPath(const std::string& path,
                                                                    CreateIfFileExists create) {
    const std::string expanded = m_collaborators.references.expandingTilde(path);
    if (auto secure = getSecureBookmark(expanded)) {
        return secure;
    }
    if (auto normal = getNormalBookmark(expanded)) {
        return normal;
    }
    const bool isFound = create == CreateIfFileExists::Yes &&
                         m_collaborators.references.kindAtPath(expanded) != FileKind::None;
    return isFound ? readableOrGranted(expanded) : std::nullopt;
}

std::optional<std::string> BookmarkUtilities::readableOrGranted(const std::string& path) {
    if (m_collaborators.references.isReadable(path)) {
        return path;
    }
    auto granted = askUserForSecureFileURLToPath(path);
    if (granted) {
        addSecureBookmark(*granted);
    }
    return granted;
}

std::optional<std::string>
BookmarkUtilities::askUserForSecureFileURLToPath(const std::string& path) {
    FileReferences& files = m_collaborators.references;
    const FileKind kind = files.kindAtPath(path);
    if (m_collaborators.openPanel == nullptr || !path.starts_with('/')) {
        return std::nullopt;
    }
    const AccessRequest request =
        accessRequest(path, kind, m_collaborators.programName, m_collaborators.strings);
    auto chosen = m_collaborators.openPanel->runModal(request.panel);
    if (!chosen || !isSamePathIgnoringCase(*chosen, request.target)) {
        return std::nullopt;
    }
    if (kind != FileKind::None) {
        return chosen;
    }
    return files.createFolder(path) ? std::optional(path) : std::nullopt;
}

bool BookmarkUtilities::startAccessingSecureFileURL(const std::string& path) const {
    return !isURLExpandedFromSecureBookmark(path) || m_collaborators.references.isReadable(path);
}

/// The desktop counts no accesses: there is nothing to give back.
void BookmarkUtilities::stopAccessingSecureFileURL(const std::string& /*path*/) {}

void BookmarkUtilities::noteURLExpandedFromSecureBookmark(const std::string& path) {
    m_expandedPaths.insert(path);
}

bool BookmarkUtilities::isURLExpandedFromSecureBookmark(const std::string& path) const {
    return m_expandedPaths.contains(path);
}

void BookmarkUtilities::clearExpandedURLWithPath(const std::string& path) {
    m_expandedPaths.erase(path);
}

void BookmarkUtilities::cleanSecureFileURLsInStore(Store store) {
    const Dictionary all = m_stores.all(store);
    Dictionary kept;
    for (const auto& [path, bookmark] : all) {
        const std::string name(path.name());
        if (m_collaborators.references.kindAtPath(name) != FileKind::None) {
            kept.set(path, bookmark);
        } else {
            clearExpandedURLWithPath(name);
        }
    }
    if (kept.size() != all.size()) {
        m_stores.setAll(std::move(kept), store);
    }
}

void BookmarkUtilities::cleanSecureFileURLs() {
    cleanSecureFileURLsInStore(Store::Secure);
    cleanSecureFileURLsInStore(Store::Normal);
}

void BookmarkUtilities::willEncodeRestorableState(Dictionary& state) const {
    Array paths;
    for (const auto& [path, bookmark] : m_stores.all(Store::Normal)) {
        const auto reference = bookmark.data().value_or(std::span<const std::byte>());
        ResolvedReference resolved = m_collaborators.references.resolve(reference);
        if (resolved.state == ReferenceState::Resolved) {
            paths.append(Value(resolved.path));
        }
    }
    if (!paths.empty()) {
        state.set("normalBookmarks", Value(std::move(paths)));
    }
}

std::optional<std::vector<std::byte>>
BookmarkUtilities::transportDataForSecureFileURL(const std::string& path) const {
    return m_collaborators.references.referenceToFile(path);
}

std::optional<std::string>
BookmarkUtilities::secureFileURLFromTransportData(std::span<const std::byte> transportData) const {
    ResolvedReference resolved = m_collaborators.references.resolve(transportData);
    return resolved.state == ReferenceState::Resolved ? std::optional(std::move(resolved.path))
                                                      : std::nullopt;
}

std::optional<std::string>
BookmarkUtilities::secureFileFromTransportData(std::span<const std::byte> transportData) const {
    return secureFileURLFromTransportData(transportData);
}

std::optional<std::string> BookmarkUtilities::secureFileFromPath(const std::string& path,
                                                                 CreateIfFileExists create) {
    return secureFileURLFromPath(path, create);
}

bool BookmarkUtilities::saveSecureFile(const std::string& path) {
    return !m_stores.isFullFor(path, Store::Secure) &&
           saveSecureFileURL(path, PreferAppScoped::Yes);
}

/// Happens at the end of the session, when nothing else writes the settings.
void BookmarkUtilities::cleanSecureFiles() {
    cleanSecureFileURLs();
    m_collaborators.defaults.synchronize();
}

bool BookmarkUtilities::startAccessing(const std::string& path) {
    return startAccessingSecureFileURL(path);
}

void BookmarkUtilities::stopAccessing(const std::string& path) {
    stopAccessingSecureFileURL(path);
}

} // namespace plenzo
