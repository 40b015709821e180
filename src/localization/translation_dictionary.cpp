#include "localization/translation_dictionary.h"

namespace plenzo {

TranslationDictionary::TranslationDictionary(const StringTable& english,
                                             const StringTable& language, TranslationNeeded needed)
    : translationNeeded(needed) {
    // In the order of the keys, so that of two equal texts the same one always counts.
    const std::map<std::string_view, std::string_view> sorted(english.begin(), english.end());
    for (const auto& [key, englishText] : sorted) {
        const auto text = language.string(key);
        if (!text || text->empty() || englishText.empty()) {
            continue;
        }
        englishToLanguage.insert_or_assign(std::string(englishText), std::string(*text));
        languageToEnglish.insert_or_assign(std::string(*text), std::string(englishText));
    }
}

std::optional<Translation> translation(const TranslationDictionary& dictionary,
                                       std::string_view text, int tag) {
    const auto english = dictionary.languageToEnglish.find(text);
    if (english != dictionary.languageToEnglish.end()) {
        return english->second == text
                   ? std::nullopt
                   : std::optional<Translation>({english->second, std::string(text)});
    }
    if (dictionary.translationNeeded == TranslationNeeded::No || tag == untranslatedTag) {
        return std::nullopt;
    }
    const auto translated = dictionary.englishToLanguage.find(text);
    return translated == dictionary.englishToLanguage.end()
               ? std::nullopt
               : std::optional<Translation>({std::string(text), translated->second});
}

} // namespace plenzo
