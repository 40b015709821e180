#pragma once

#include "platform/localized_strings.h"
#include "propertylist/string_table.h"

#include <string>
#include <vector>

namespace plenzo {

/// The program's main string table, "Localizable.strings", in the first of the user's languages
/// that it exists in, else in English.
class MainStringTable final : public LocalizedStrings {
public:
    /// The folder holds a folder "LANGUAGE.lproj" for each language.
    MainStringTable(const std::string& resourceFolder, const std::vector<std::string>& languages);

    [[nodiscard]] std::string string(std::string_view key) const override;

private:
    StringTable m_table;
};

/// The names under which a language's folder is looked for, of the LANGUAGE list ("de_AT:fr") or
/// else LC_ALL, LC_MESSAGES or LANG, most wanted first: "de_AT", "de", "fr", and "en" as the last.
[[nodiscard]] std::vector<std::string> languagesOfUser();

/// The folder with the program's resources: "share/plenzoalarm" beside the folder of the program.
[[nodiscard]] std::string resourceFolder();

} // namespace plenzo
