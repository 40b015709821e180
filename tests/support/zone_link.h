#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace plenzo {

/// A link such as /etc/localtime to a zone of the tests' zone data.
class ZoneLink {
public:
    ZoneLink(std::string path, const std::string& zoneName) : m_path(std::move(path)) {
        replace(zoneName);
    }

    [[nodiscard]] const std::string& path() const { return m_path; }

    /// In one step, as the system's programs do it.
    void replace(const std::string& zoneName) const {
        const std::string newLink = m_path + ".new";
        std::filesystem::create_symlink(PLENZO_TEST_DATA "/zoneinfo/" + zoneName, newLink);
        std::filesystem::rename(newLink, m_path);
    }

private:
    std::string m_path;
};

} // namespace plenzo
