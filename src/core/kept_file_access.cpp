#include "core/kept_file_access.h"

namespace plenzo {

void KeptFileAccess::saveSecureFileURLsIn(RecordGroup group) {
    for (const EventDict& eventDict : group) {
        if (m_fileAccess != nullptr && eventDict && !isDeletionNotice(*eventDict)) {
            saveSecureFileURLsInEventDict(*eventDict);
        }
    }
}

void KeptFileAccess::saveSecureFileURLsInEventDict(const Dictionary& eventDict) {
    const Array* reminders = eventDict.arrayForKey(keys::rem);
    if (m_fileAccess == nullptr || reminders == nullptr) {
        return;
    }
    for (const Value& reminder : *reminders) {
        const Dictionary* entry = reminder.dictionary();
        const auto transportData = entry != nullptr ? entry->dataForKey(keys::book) : std::nullopt;
        if (transportData && reminderType(*entry) == ReminderType::Open) {
            saveSecureFile(*transportData);
        }
    }
}

void KeptFileAccess::saveSecureFile(std::span<const std::byte> transportData) {
    const auto path = m_fileAccess->secureFileFromTransportData(transportData);
    if (path && !m_fileAccess->secureFileFromPath(*path, FileAccess::CreateIfFileExists::No)) {
        m_fileAccess->saveSecureFile(*path);
    }
}

} // namespace plenzo
