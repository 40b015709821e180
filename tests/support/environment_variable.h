#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace plenzo {

/// Sets a variable for the length of a test; null removes it.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* variable, const char* value) : m_variable(variable) {
        if (const char* old = std::getenv(variable)) {
            m_old = old;
        }
        set(value);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { set(m_old ? m_old->c_str() : nullptr); }

private:
    void set(const char* value) {
        value != nullptr ? ::setenv(m_variable, value, 1) : ::unsetenv(m_variable);
    }

    const char* m_variable;
    std::optional<std::string> m_old;
};

} // namespace plenzo
