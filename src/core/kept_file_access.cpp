#include "core/kept_file_access.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr std::size_t filesAtATime = 200;
constexpr std::size_t mostNoted = 20'000;

std::string_view textOf(std::span<const std::byte> data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

} // namespace

void KeptFileAccess::saveSecureFileURLsIn(RecordGroup group) {
    for (const EventDict& eventDict : group) {
        if (m_collaborators.fileAccess != nullptr && eventDict && !isDeletionNotice(*eventDict)) {
            saveSecureFileURLsInEventDict(*eventDict);
        }
    }
}

void KeptFileAccess::saveSecureFileURLsInEventDict(const Dictionary& eventDict) {
    const Array* reminders = eventDict.arrayForKey(keys::rem);
    if (m_collaborators.fileAccess == nullptr || reminders == nullptr) {
        return;
    }
    for (const Value& reminder : *reminders) {
        const Dictionary* entry = reminder.dictionary();
        const Value* book = entry != nullptr ? entry->find(keys::book) : nullptr;
        if (book != nullptr && book->data() && reminderType(*entry) == ReminderType::Open) {
            note(*book);
        }
    }
}

void KeptFileAccess::note(const Value& transportData) {
    if (m_noted.size() >= mostNoted || m_notedData.contains(textOf(*transportData.data()))) {
        return;
    }
    // Looked up are the bytes of the deque's own element, which stays where it is.
    m_noted.push_back(transportData);
    m_notedData.insert(textOf(*m_noted.back().data()));
}

void KeptFileAccess::saveNext() {
    m_next.reset();
    if (m_noted.size() > filesAtATime) {
        m_next =
            m_collaborators.timers.schedule(m_collaborators.clock.now(), [this] { saveNext(); });
    }
    saveFirst(filesAtATime);
}

void KeptFileAccess::saveAll() {
    m_next.reset();
    saveFirst(m_noted.size());
}

void KeptFileAccess::forgetNoted() {
    m_next.reset();
    m_notedData.clear();
    m_noted.clear();
    m_together.reset();
}

void KeptFileAccess::saveFirst(std::size_t count) {
    if (m_noted.empty()) {
        return;
    }
    if (!m_together) {
        m_together = m_collaborators.fileAccess->changeTogether();
    }
    for (std::size_t left = std::min(count, m_noted.size()); left > 0; --left) {
        const auto transportData = *m_noted.front().data();
        saveSecureFile(transportData);
        m_notedData.erase(textOf(transportData));
        m_noted.pop_front();
    }
    if (m_noted.empty()) {
        m_together.reset();
    }
}

void KeptFileAccess::saveSecureFile(std::span<const std::byte> transportData) const {
    FileAccess& files = *m_collaborators.fileAccess;
    const auto path = files.secureFileFromTransportData(transportData);
    if (path && !files.secureFileFromPath(*path, FileAccess::CreateIfFileExists::No)) {
        files.saveSecureFile(*path);
    }
}

} // namespace plenzo
