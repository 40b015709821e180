#include "dates/relative_date_formatter.h"
#include "linux/main_string_table.h"
#include "support/instants.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace plenzo {
namespace {

/// The main table's words and the locale's times, together, at noon of 10 March 2024.
class WordsForDays {
public:
    WordsForDays(const char* language, const char* locale)
        : m_table(PLENZO_RESOURCES, {language}),
          m_formatter(
              locale, TimeZone::universal(),
              [this](std::string_view key) { return m_table.string(key); },
              [] { return utc(2024, 3, 10, 12); }) {
        m_formatter.setUseRelativeDates(true);
        m_formatter.setDateStyle(FormatStyle::Short);
        m_formatter.setTimeStyle(FormatStyle::Short);
    }
    /// At a quarter past nine in the morning.
    [[nodiscard]] std::string on(int day) const {
        return m_formatter.stringFromDate(utc(2024, 3, day, 9, 15));
    }

private:
    MainStringTable m_table;
    RelativeDateFormatter m_formatter;
};

TEST(ADayBesideThePresentOne, HasAWordInEveryLanguage) {
    struct Language {
        const char* language;
        const char* locale;
        const char* yesterday;
        const char* today;
        const char* tomorrow;
        const char* later;
    };
    const Language languages[] = {
        {"en", "en_GB", "Yesterday at 09:15", "Today at 09:15", "Tomorrow at 09:15",
         "12/03/2024, 09:15"},
        {"de", "de_DE", "Gestern um 09:15", "Heute um 09:15", "Morgen um 09:15", "12.03.24, 09:15"},
        {"fr", "fr_FR", "Hier à 09:15", "Aujourd’hui à 09:15", "Demain à 09:15",
         "12/03/2024 09:15"},
        {"es", "es_ES", "Ayer, 9:15", "Hoy, 9:15", "Mañana, 9:15", "12/3/24, 9:15"},
        {"ja", "ja_JP", "昨日 9:15", "今日 9:15", "明日 9:15", "2024/03/12 9:15"},
        {"ar", "ar_EG", "أمس الساعة ٩:١٥ ص", "اليوم الساعة ٩:١٥ ص", "غدًا الساعة ٩:١٥ ص",
         "١٢\u200F/٣\u200F/٢٠٢٤، ٩:١٥ ص"},
    };
    for (const Language& expected : languages) {
        const WordsForDays words(expected.language, expected.locale);
        EXPECT_EQ(words.on(9), expected.yesterday);
        EXPECT_EQ(words.on(10), expected.today);
        EXPECT_EQ(words.on(11), expected.tomorrow);
        EXPECT_EQ(words.on(12), expected.later);
    }
}

} // namespace
} // namespace plenzo
