#pragma once

#include "platform/user_defaults.h"

namespace plenzo {

/// Settings in memory.
class FakeUserDefaults final : public UserDefaults {
public:
    void registerDefaults(const Dictionary& defaults) override { setAll(m_registered, defaults); }
    [[nodiscard]] Value valueForKey(std::string_view key) const override {
        const Value* value = m_stored.find(key);
        value = value != nullptr ? value : m_registered.find(key);
        return value != nullptr ? *value : Value();
    }
    void setValues(const Dictionary& values) override { setAll(m_stored, values); }
    bool synchronize() override {
        ++synchronizeCount;
        return true;
    }

    int synchronizeCount = 0;

private:
    static void setAll(Dictionary& target, const Dictionary& values) {
        for (const auto& [key, value] : values) {
            target.set(key, value);
        }
    }

    Dictionary m_registered;
    Dictionary m_stored;
};

} // namespace plenzo
