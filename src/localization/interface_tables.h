#pragma once

#include "localization/translation_dictionary.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// Finds the string tables of the interface files, "LANGUAGE.lproj/NAME.strings", in the first of
/// the user's languages that has one. A regional variant ("de_AT") without a table of its own is
/// followed by its language ("de").
class InterfaceTables {
public:
    struct Found {
        /// Absent in English, and when the English table is missing.
        std::optional<TranslationDictionary> dictionary;
        bool isEnglish = true;
    };

    InterfaceTables(std::string resourceFolder, const std::vector<std::string>& languages);

    /// No table in any of the languages counts as English.
    [[nodiscard]] Found translationDict(const std::string& name, TranslationNeeded needed) const;

    /// The first of the languages that has a folder here; "en" when none has.
    [[nodiscard]] const std::string& language() const { return m_language; }

    /// "RESOURCES/NAME.ui"
    [[nodiscard]] std::string interfaceFile(const std::string& name) const;

private:
    [[nodiscard]] std::string folder(const std::string& language) const;
    [[nodiscard]] std::optional<StringTable> table(const std::string& name,
                                                   const std::string& language) const;

    std::string m_resourceFolder;
    std::vector<std::string> m_languages;
    std::string m_language;
};

} // namespace plenzo
