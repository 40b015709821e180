#include "linux/file_user_defaults.h"

#include "linux/whole_file.h"
#include "propertylist/binary_property_list.h"

#include <utility>

namespace plenzo {

FileUserDefaults::FileUserDefaults(std::string path) : m_path(std::move(path)) {
    load();
}

void FileUserDefaults::load() {
    std::error_code error;
    if (!std::filesystem::exists(m_path, error)) {
        return;
    }
    const auto bytes = readWholeFile(m_path);
    const auto value = bytes ? readBinaryPropertyList(*bytes) : std::nullopt;
    const Dictionary* stored = value ? value->dictionary() : nullptr;
    if (stored != nullptr) {
        m_stored = *stored;
    } else {
        m_fileIsDamaged = true;
    }
}

void FileUserDefaults::registerDefaults(const Dictionary& defaults) {
    for (const auto& [key, value] : defaults) {
        m_registered.set(key, value);
    }
}

Value FileUserDefaults::valueForKey(std::string_view key) const {
    if (const Value* stored = m_stored.find(key)) {
        return *stored;
    }
    const Value* registered = m_registered.find(key);
    return registered != nullptr ? *registered : Value();
}

void FileUserDefaults::setValues(const Dictionary& values) {
    for (const auto& [key, value] : values) {
        const Value* stored = m_stored.find(key);
        if (stored == nullptr || !(*stored == value)) {
            m_stored.set(key, value);
            m_hasUnwrittenValues = true;
        }
    }
}

bool FileUserDefaults::synchronize() {
    if (!m_hasUnwrittenValues) {
        return true;
    }
    if (m_fileIsDamaged && !setDamagedFileAside(m_path)) {
        return false;
    }
    m_fileIsDamaged = false;
    if (!replaceWholeFile(m_path, writeBinaryPropertyList(Value(m_stored)))) {
        return false;
    }
    m_hasUnwrittenValues = false;
    return true;
}

} // namespace plenzo
