#include "linux/main_string_table.h"

#include "linux/environment.h"
#include "linux/whole_file.h"

#include <filesystem>
#include <sstream>
#include <system_error>

namespace plenzo {

namespace {

/// "C" asks for no translation, whatever LANGUAGE says.
bool isUntranslated(const std::string& locale) {
    return locale.empty() || locale == "C" || locale == "POSIX" || locale.starts_with("C.");
}

std::string wantedLanguages() {
    const std::string locale = firstSetInEnvironment({"LC_ALL", "LC_MESSAGES", "LANG"});
    if (isUntranslated(locale)) {
        return {};
    }
    const std::string list = environment("LANGUAGE");
    return list.empty() ? locale : list;
}

} // namespace

MainStringTable::MainStringTable(const std::string& resourceFolder,
                                 const std::vector<std::string>& languages) {
    for (const std::string& language : languages) {
        std::string path = resourceFolder;
        path.append("/").append(language).append(".lproj/Localizable.strings");
        const auto bytes = readWholeFile(path);
        if (bytes) {
            m_table = StringTable::fromBytes(*bytes);
            return;
        }
    }
}

std::string MainStringTable::string(std::string_view key) const {
    return std::string(m_table.string(key).value_or(std::string_view()));
}

std::vector<std::string> languagesOfUser() {
    std::vector<std::string> languages;
    std::istringstream list(wantedLanguages());
    for (std::string locale; std::getline(list, locale, ':');) {
        const std::string name = locale.substr(0, locale.find_first_of(".@"));
        const std::string language = name.substr(0, name.find('_'));
        // It becomes part of a path.
        if (name.empty() || name.find('/') != std::string::npos) {
            continue;
        }
        languages.push_back(name);
        if (language != name) {
            languages.push_back(language);
        }
    }
    languages.emplace_back("en");
    return languages;
}

std::string resourceFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path().parent_path() / "share" / "plenzoalarm").string();
}

} // namespace plenzo
