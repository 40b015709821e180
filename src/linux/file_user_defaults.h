#pragma once

#include "platform/user_defaults.h"

#include <string>

namespace plenzo {

/// The settings in one binary property-list file, read once and written whole. A damaged file
/// counts as empty and is set aside before anything is written in its place.
class FileUserDefaults final : public UserDefaults {
public:
    explicit FileUserDefaults(std::string path);

    void registerDefaults(const Dictionary& defaults) override;
    [[nodiscard]] Value valueForKey(std::string_view key) const override;
    void setValues(const Dictionary& values) override;
    bool synchronize() override;

private:
    void load();

    std::string m_path;
    Dictionary m_registered;
    Dictionary m_stored;
    bool m_hasUnwrittenValues = false;
    bool m_fileIsDamaged = false;
};

} // namespace plenzo
