#include "host/store/stored_folder.h"

#include <algorithm>

namespace plenzo {

namespace {

using Kind = StoredFile::Kind;

bool isSingle(const StoredFile& stored) {
    return stored.file->isCalendar && stored.file->holdsOneItem;
}

} // namespace

void decideKinds(StoredFolder& folder) {
    folder.isCollection = folder.isCollection || folder.folder.isCollection();
    std::vector<StoredFile>& files = folder.files;
    const bool areSeveral = std::count_if(files.begin(), files.end(), isSingle) > 1;
    const bool holdsItems =
        areSeveral || std::any_of(files.begin(), files.end(), [](const StoredFile& stored) {
            return stored.kind == Kind::ItemOfFolder;
        });
    for (StoredFile& stored : files) {
        const bool isUndecided = stored.kind == Kind::Undecided && stored.file->isCalendar;
        const bool isItem = isSingle(stored) && (holdsItems || stored.file->isNamedAfterItem);
        if (folder.isCollection || (isUndecided && isItem)) {
            stored.kind = Kind::ItemOfFolder;
        } else if (isUndecided && stored.file->isWhole) { // else the item may be still to come
            stored.kind = Kind::OwnCalendar;
        }
    }
}

void decideKindsAnew(StoredFolder& folder) {
    folder.isCollection = false;
    for (StoredFile& stored : folder.files) {
        stored.kind = Kind::Undecided;
    }
    decideKinds(folder);
}

} // namespace plenzo
