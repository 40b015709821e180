#include "localization/translation_dictionary.h"

#include <gtest/gtest.h>

#include <span>
#include <string_view>

namespace plenzo {
namespace {

StringTable tableOf(std::string_view text) {
    return StringTable::fromBytes(std::as_bytes(std::span(text)));
}

TranslationDictionary dictionaryOf(TranslationNeeded needed) {
    return {tableOf(R"(a = Snooze; b = Remind; c = Name; d = Left; e = ""; f = Only;)"),
            tableOf(R"(a = "Später"; b = "Später"; c = Name; d = ""; e = Leer; g = Nur;)"), needed};
}

/// "ENGLISH > SHOWN"
std::string resultOf(TranslationNeeded needed, std::string_view text, int tag = 0) {
    const auto result = translation(dictionaryOf(needed), text, tag);
    return result ? result->english + " > " + result->shown : "nothing";
}

TEST(ATranslationDictionary, HasTheTextsOfBothTablesByEachOther) {
    const auto dictionary = dictionaryOf(TranslationNeeded::Yes);
    using Texts = TranslationDictionary::Texts;
    EXPECT_EQ(dictionary.englishToLanguage,
              (Texts{{"Snooze", "Später"}, {"Remind", "Später"}, {"Name", "Name"}}));
    EXPECT_EQ(dictionary.languageToEnglish, (Texts{{"Später", "Remind"}, {"Name", "Name"}}))
        << "of two equal texts the one with the last key";
}

TEST(ATranslation, GoesIntoTheLanguage) {
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, "Snooze"), "Snooze > Später");
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, "Left"), "nothing") << "an empty text";
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, "Only"), "nothing") << "a key that one table lacks";
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, "snooze"), "nothing");
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, ""), "nothing");
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, "Name"), "nothing") << "the same in both";
}

TEST(ATranslation, KnowsATextThatIsTheLanguagesAlready) {
    for (const auto needed : {TranslationNeeded::No, TranslationNeeded::Yes}) {
        EXPECT_EQ(resultOf(needed, "Später"), "Remind > Später");
        EXPECT_EQ(resultOf(needed, "Später", untranslatedTag), "Remind > Später");
        EXPECT_EQ(resultOf(needed, "Name"), "nothing");
    }
    EXPECT_EQ(resultOf(TranslationNeeded::No, "Snooze"), "nothing");
}

TEST(ATranslation, IsNotForWhatIsTaggedToStayEnglish) {
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, "Snooze", untranslatedTag), "nothing");
    EXPECT_EQ(resultOf(TranslationNeeded::Yes, "Snooze", 99), "Snooze > Später");
}

} // namespace
} // namespace plenzo
