#pragma once

#include "propertylist/string_table.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// Whether an interface is loaded with its English texts, or has those of the language already.
enum class TranslationNeeded { No, Yes };

/// The texts of one interface file in English and in one language, each by the other.
struct TranslationDictionary {
    using Texts = std::map<std::string, std::string, std::less<>>;

    /// Of a key that only one table has there is no text.
    TranslationDictionary(const StringTable& english, const StringTable& language,
                          TranslationNeeded needed);

    Texts englishToLanguage;
    Texts languageToEnglish;
    TranslationNeeded translationNeeded;
};

/// What becomes of a text of an interface: which one it shows then, and its English text.
struct Translation {
    std::string english;
    std::string shown;
};

/// A control with this tag is never translated.
constexpr int untranslatedTag = 100;

/// Nothing when the text stays as it is and is English. A text that is the language's already stays
/// and has its English text found, whatever the tag.
[[nodiscard]] std::optional<Translation> translation(const TranslationDictionary& dictionary,
                                                     std::string_view text, int tag);

} // namespace plenzo
