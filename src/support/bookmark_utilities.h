#pragma once

#include "platform/file_access.h"
#include "platform/file_references.h"
#include "platform/localized_strings.h"
#include "platform/open_panel.h"
#include "platform/user_defaults.h"
#include "support/bookmark_stores.h"

#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// Bookmarks of files, kept in the settings: references by path to the files that the user or the
/// host gave access to. A bookmark whose file is gone or another one by now is removed as soon as
/// it is met. Asks the user where there is none. Every failure gives nothing or false.
class BookmarkUtilities final : public FileAccess {
public:
    struct Collaborators {
        UserDefaults& defaults;
        FileReferences& references;
        const LocalizedStrings& strings;
        /// Null where nobody can be asked: then the user declines.
        OpenPanel* openPanel = nullptr;
        /// The name under which the program asks.
        std::string programName;
    };

    using Store = BookmarkStore;
    enum class PreferAppScoped { No, Yes };

    explicit BookmarkUtilities(Collaborators collaborators);

    bool addBookmarkForFileURL(const std::string& path, Store store);
    bool addSecureBookmark(const std::string& path);
    bool addNormalBookmark(const std::string& path);

    std::optional<std::string> getFileURLFromBookmarkPath(const std::string& path, Store store);
    std::optional<std::string> getSecureBookmark(const std::string& path);
    std::optional<std::string> getNormalBookmark(const std::string& path);

    void removeBookmarkWithPath(const std::string& path, Store store);
    void removeSecureBookmark(const std::string& path);
    void removeNormalBookmark(const std::string& path);

    /// A secure bookmark where that is preferred and works, else a normal one. False when none was
    /// stored.
    bool saveSecureFileURL(const std::string& path, PreferAppScoped prefer);
    /// From both stores.
    void removeSecureFileURLWithPath(const std::string& path);
    /// The file of the secure bookmark, else of the normal one. Without either, when it is to be
    /// created, the file itself if it can be read or else if the user grants it, which is kept.
    std::optional<std::string> secureFileURLFromPath(const std::string& path,
                                                     CreateIfFileExists create);
    /// Nothing unless the user chose just that path. When nothing is there, asks for the folder
    /// above it and makes a folder at the path.
    std::optional<std::string> askUserForSecureFileURLToPath(const std::string& path);

    /// Expanded files, those of secure bookmarks, are the ones whose access can be lost.
    [[nodiscard]] bool startAccessingSecureFileURL(const std::string& path) const;
    void stopAccessingSecureFileURL(const std::string& path);
    void noteURLExpandedFromSecureBookmark(const std::string& path);
    [[nodiscard]] bool isURLExpandedFromSecureBookmark(const std::string& path) const;
    void clearExpandedURLWithPath(const std::string& path);

    /// Removes the bookmarks at whose path there is no file.
    void cleanSecureFileURLsInStore(Store store);
    void cleanSecureFileURLs();

    /// Data by which another process finds the file.
    [[nodiscard]] std::optional<std::vector<std::byte>>
    transportDataForSecureFileURL(const std::string& path) const;
    [[nodiscard]] std::optional<std::string>
    secureFileURLFromTransportData(std::span<const std::byte> transportData) const;

    /// Puts the paths of the normal bookmarks that are found into the state under
    /// "normalBookmarks", if there are any, for whoever restores the program in the next session.
    void willEncodeRestorableState(Dictionary& state) const;

    [[nodiscard]] std::optional<std::string>
    secureFileFromTransportData(std::span<const std::byte> transportData) const override;
    [[nodiscard]] std::optional<std::string> secureFileFromPath(const std::string& path,
                                                                CreateIfFileExists create) override;
    bool saveSecureFile(const std::string& path) override;
    [[nodiscard]] Handle changeTogether() override { return m_stores.changeTogether(); }
    void cleanSecureFiles() override;
    bool startAccessing(const std::string& path) override;
    void stopAccessing(const std::string& path) override;

private:
    std::optional<std::string> readableOrGranted(const std::string& path);

    Collaborators m_collaborators;
    BookmarkStores m_stores;
    std::set<std::string> m_expandedPaths;
};

} // namespace plenzo
