#pragma once

#include <functional>
#include <string>

namespace plenzo {

/// A notification of the desktop that only informs.
struct Notice {
    std::string summary;
    std::string body;
};

/// Says what went wrong to whoever looks: on standard error, and for what the user did with a
/// notification besides.
class UserMessages {
public:
    explicit UserMessages(std::function<void(const Notice&)> notify)
        : m_notify(std::move(notify)) {}

    /// Standard error alone.
    void note(const std::string& problem) const;

    void tell(const std::string& what, const std::string& why) const;

private:
    std::function<void(const Notice&)> m_notify;
};

} // namespace plenzo
