#pragma once

#include "core/record_walk.h"
#include "platform/file_access.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace plenzo {

/// The agent's own rights to the files of open-file reminders: kept when the record comes, used
/// when the alarm fires.
class KeptFileAccess {
public:
    /// Null when files cannot be opened here; then nothing is kept.
    explicit KeptFileAccess(FileAccess* fileAccess) : m_fileAccess(fileAccess) {}

    /// Keeps the access to the file of each open-file reminder with "book". Skips null records and
    /// deletion notices.
    void saveSecureFileURLsIn(RecordGroup group);
    void saveSecureFileURLsInEventDict(const Dictionary& eventDict);

private:
    void saveSecureFile(std::span<const std::byte> transportData);

    FileAccess* m_fileAccess;
};

} // namespace plenzo
