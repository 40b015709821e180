#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace plenzo {

/// Changes a folder of calendars in every way that people and programs do, by chance. UIDs, names
/// and places are few, so that what belongs together often lies apart.
class RandomCalendars {
public:
    RandomCalendars(std::filesystem::path folder, unsigned seed);

    void change();

    /// A number from 0 on, below the limit.
    int below(int limit);

private:
    [[nodiscard]] std::filesystem::path someFolder();
    [[nodiscard]] std::filesystem::path someFile();
    std::string someCalendar();
    std::string someItem();
    std::string someTimes();
    void writeFile();
    void rewriteInPlace();
    void describeFolder();
    void moveFile();
    void changeFolders();
    void link();
    void changeMode();

    std::filesystem::path m_folder;
    std::mt19937 m_random;
};

} // namespace plenzo
