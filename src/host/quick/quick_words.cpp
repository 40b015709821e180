#include "host/quick/quick_words.h"

#include <algorithm>
#include <unordered_map>

namespace plenzo {

namespace {

struct WordRow {
    std::string_view words; // one space between words
    WordRole role;
    int number;
};

using enum WordRole;

constexpr int unitNumber(QuickUnit unit) {
    return static_cast<int>(unit);
}

constexpr int minutes = unitNumber(QuickUnit::Minute);
constexpr int hours = unitNumber(QuickUnit::Hour);
constexpr int days = unitNumber(QuickUnit::Day);
constexpr int weeks = unitNumber(QuickUnit::Week);
constexpr int months = unitNumber(QuickUnit::Month);
constexpr int years = unitNumber(QuickUnit::Year);

constexpr WordRow englishRows[] = {
    {"todo", ToDo, 0},
    {"to-do", ToDo, 0},
    {"task", ToDoBeforeColon, 0},

    {"a", Number, 1},
    {"an", Number, 1},
    {"one", Number, 1},
    {"two", Number, 2},
    {"three", Number, 3},
    {"four", Number, 4},
    {"five", Number, 5},
    {"six", Number, 6},
    {"seven", Number, 7},
    {"eight", Number, 8},
    {"nine", Number, 9},
    {"ten", Number, 10},
    {"eleven", Number, 11},
    {"twelve", Number, 12},

    {"min", Unit, minutes},
    {"mins", Unit, minutes},
    {"minute", Unit, minutes},
    {"minutes", Unit, minutes},
    {"h", Unit, hours},
    {"hr", Unit, hours},
    {"hrs", Unit, hours},
    {"hour", Unit, hours},
    {"hours", Unit, hours},
    {"day", Unit, days},
    {"days", Unit, days},
    {"week", Unit, weeks},
    {"weeks", Unit, weeks},
    {"month", Unit, months},
    {"months", Unit, months},
    {"year", Unit, years},
    {"years", Unit, years},

    {"am", Meridiem, 0},
    {"a.m", Meridiem, 0},
    {"pm", Meridiem, 12},
    {"p.m", Meridiem, 12},
    {"st", OrdinalEnding, 0},
    {"nd", OrdinalEnding, 0},
    {"rd", OrdinalEnding, 0},
    {"th", OrdinalEnding, 0},
    {"o'clock", ClockWord, 0},

    {"january", Month, 1},
    {"jan", Month, 1},
    {"february", Month, 2},
    {"feb", Month, 2},
    {"march", Month, 3},
    {"mar", Month, 3},
    {"april", Month, 4},
    {"apr", Month, 4},
    {"may", Month, 5},
    {"june", Month, 6},
    {"jun", Month, 6},
    {"july", Month, 7},
    {"jul", Month, 7},
    {"august", Month, 8},
    {"aug", Month, 8},
    {"september", Month, 9},
    {"sep", Month, 9},
    {"sept", Month, 9},
    {"october", Month, 10},
    {"oct", Month, 10},
    {"november", Month, 11},
    {"nov", Month, 11},
    {"december", Month, 12},
    {"dec", Month, 12},

    {"monday", Weekday, 0},
    {"mon", Weekday, 0},
    {"tuesday", Weekday, 1},
    {"tue", Weekday, 1},
    {"tues", Weekday, 1},
    {"wednesday", Weekday, 2},
    {"thursday", Weekday, 3},
    {"thu", Weekday, 3},
    {"thurs", Weekday, 3},
    {"friday", Weekday, 4},
    {"fri", Weekday, 4},
    {"saturday", Weekday, 5},
    {"sunday", Weekday, 6},
    {"wed", DoubtfulWeekday, 2},
    {"sat", DoubtfulWeekday, 5},
    {"sun", DoubtfulWeekday, 6},

    {"today", NamedDay, 0},
    {"tomorrow", NamedDay, 1},
    {"day after tomorrow", NamedDay, 2},
    {"weekend", Weekend, 0},
    {"tonight", Tonight, 20},
    {"noon", NamedTime, 12},
    {"midday", NamedTime, 12},
    {"midnight", NamedTime, 24},
    {"morning", DayPart, 9},
    {"afternoon", DayPart, 15},
    {"evening", DayPart, 19},
    {"night", DayPart, 20},
    {"breakfast", MorningHint, 0},
    {"dinner", EveningHint, 0},
    {"supper", EveningHint, 0},
    {"drinks", EveningHint, 0},
    {"party", EveningHint, 0},
    {"concert", EveningHint, 0},
    {"cinema", EveningHint, 0},
    {"movie", EveningHint, 0},
    {"theatre", EveningHint, 0},

    {"on", On, 0},
    {"by", On, 0},
    {"the", The, 0},
    {"of", Of, 0},
    {"next", Next, 0},
    {"this", This, 0},
    {"at", At, 0},
    {"@", At, 0},
    {"in", In, 0},
    {"in the", During, 0},
    {"at", During, 0},
    {"from", From, 0},
    {"-", To, 0},
    {"to", To, 0},
    {"until", Until, 0},
    {"till", Until, 0},
    {"through", Until, 0},
    {"for", For, 0},
    {"with", With, 0},
    {"every", Every, 0},
    {"each", Every, 0},
    {"other", Other, 0},
    {"second", Other, 0},
    {"first", Position, 1},
    {"second", Position, 2},
    {"third", Position, 3},
    {"fourth", Position, 4},
    {"last", Position, -1},
    {"times", Times, 0},
    {"and", And, 0},
    {"&", And, 0},
    {"daily", Frequency, days},
    {"weekly", Frequency, weeks},
    {"monthly", Frequency, months},
    {"yearly", Frequency, years},
    {"annually", Frequency, years},
    {"fortnightly", Fortnightly, 0},
    {"biweekly", Fortnightly, 0},
    {"weekdays", Workdays, 0},
    {"workdays", Workdays, 0},
    {"weekday", Workday, 0},
    {"workday", Workday, 0},
    {"room", Place, 0},
    {"building", Place, 0},
    {"hall", Place, 0},
    {"office", Place, 0},
    {"cafe", Place, 0},
    {"café", Place, 0},
    {"restaurant", Place, 0},
    {"hotel", Place, 0},
    {"bar", Place, 0},
    {"park", Place, 0},
    {"library", Place, 0},
    {"night", NightOfName, 0},
    {"24/7", NoDate, 0},
    {"9/11", NoDate, 0},
};

constexpr WordRow germanRows[] = {
    {"aufgabe", ToDo, 0},

    {"ein", Number, 1},
    {"eine", Number, 1},
    {"einer", Number, 1},
    {"einem", Number, 1},
    {"zwei", Number, 2},
    {"drei", Number, 3},
    {"vier", Number, 4},
    {"fünf", Number, 5},
    {"sechs", Number, 6},
    {"sieben", Number, 7},
    {"acht", Number, 8},
    {"neun", Number, 9},
    {"zehn", Number, 10},
    {"elf", Number, 11},
    {"zwölf", Number, 12},

    {"minuten", Unit, minutes},
    {"std", Unit, hours},
    {"stunde", Unit, hours},
    {"stunden", Unit, hours},
    {"tag", Unit, days},
    {"tage", Unit, days},
    {"tagen", Unit, days},
    {"woche", Unit, weeks},
    {"wochen", Unit, weeks},
    {"monat", Unit, months},
    {"monate", Unit, months},
    {"monaten", Unit, months},
    {"jahr", Unit, years},
    {"jahre", Unit, years},
    {"jahren", Unit, years},
    {"uhr", ClockWord, 0},

    {"januar", Month, 1},
    {"februar", Month, 2},
    {"märz", Month, 3},
    {"mai", Month, 5},
    {"juni", Month, 6},
    {"juli", Month, 7},
    {"oktober", Month, 10},
    {"okt", Month, 10},
    {"dezember", Month, 12},
    {"dez", Month, 12},

    {"montag", Weekday, 0},
    {"dienstag", Weekday, 1},
    {"mittwoch", Weekday, 2},
    {"donnerstag", Weekday, 3},
    {"freitag", Weekday, 4},
    {"samstag", Weekday, 5},
    {"sonnabend", Weekday, 5},
    {"sonntag", Weekday, 6},

    {"heute", NamedDay, 0},
    {"morgen", NamedDay, 1},
    {"übermorgen", NamedDay, 2},
    {"wochenende", Weekend, 0},
    {"mittags", NamedTime, 12},
    {"mitternacht", NamedTime, 24},
    {"früh", DayPart, 9},
    {"morgen", DayPart, 9},
    {"vormittag", DayPart, 10},
    {"nachmittag", DayPart, 15},
    {"abend", DayPart, 19},
    {"morgens", DayPart, 9},
    {"nachmittags", DayPart, 15},
    {"abends", DayPart, 19},
    {"frühstück", MorningHint, 0},
    {"abendessen", EveningHint, 0},
    {"konzert", EveningHint, 0},
    {"kino", EveningHint, 0},
    {"theater", EveningHint, 0},

    {"am", On, 0},
    {"den", The, 0},
    {"nächsten", Next, 0},
    {"nächste", Next, 0},
    {"nächster", Next, 0},
    {"nächstes", Next, 0},
    {"diesen", This, 0},
    {"diese", This, 0},
    {"dieses", This, 0},
    {"kommenden", This, 0},
    {"um", At, 0},
    {"im", In, 0},
    {"am", During, 0},
    {"von", From, 0},
    {"vom", From, 0},
    {"bis", Until, 0},
    {"bis zum", Until, 0},
    {"für", For, 0},
    {"mit", With, 0},
    {"jeden", Every, 0},
    {"jede", Every, 0},
    {"jedes", Every, 0},
    {"alle", Every, 0},
    {"zweite", Other, 0},
    {"zweiten", Other, 0},
    {"zweites", Other, 0},
    {"ersten", Position, 1},
    {"zweiten", Position, 2},
    {"dritten", Position, 3},
    {"vierten", Position, 4},
    {"letzten", Position, -1},
    {"mal", Times, 0},
    {"und", And, 0},
    {"täglich", Frequency, days},
    {"wöchentlich", Frequency, weeks},
    {"monatlich", Frequency, months},
    {"jährlich", Frequency, years},
    {"werktags", Workdays, 0},
    {"werktag", Workday, 0},
    {"raum", Place, 0},
    {"zimmer", Place, 0},
    {"saal", Place, 0},
    {"büro", Place, 0},
    {"haus", Place, 0},
    {"gebäude", Place, 0},
};

using Vocabulary = std::unordered_multimap<std::string_view, const WordRow*>;

std::string_view firstWord(std::string_view words) {
    return words.substr(0, words.find(' '));
}

template <std::size_t count>
void addRows(const WordRow (&rows)[count], Vocabulary& vocabulary) {
    for (const WordRow& row : rows) {
        vocabulary.emplace(firstWord(row.words), &row);
    }
}

/// The rows by their first words.
const Vocabulary& vocabulary() {
    static const Vocabulary all = [] {
        Vocabulary rows;
        addRows(englishRows, rows);
        addRows(germanRows, rows);
        return rows;
    }();
    return all;
}

/// How many tokens from `index` on the words cover, 0 when they are others.
std::size_t coveredTokens(const std::vector<QuickToken>& tokens, std::size_t index,
                          std::string_view words) {
    std::size_t length = 0;
    while (!words.empty()) {
        const std::string_view word = firstWord(words);
        if (index + length >= tokens.size() || tokens[index + length].folded != word) {
            return 0;
        }
        ++length;
        words.remove_prefix(std::min(words.size(), word.size() + 1));
    }
    return length;
}

constexpr std::uint64_t roleBit(WordRole role) {
    return std::uint64_t(1) << static_cast<unsigned>(role);
}

} // namespace

std::uint64_t rolesOf(std::string_view folded) {
    std::uint64_t roles = 0;
    const auto [first, last] = vocabulary().equal_range(folded);
    for (auto row = first; row != last; ++row) {
        roles |= roleBit(row->second->role);
    }
    return roles;
}

std::optional<WordMatch> wordAt(const std::vector<QuickToken>& tokens, std::size_t index,
                                WordRole role) {
    if (index >= tokens.size() || (tokens[index].roles & roleBit(role)) == 0) {
        return std::nullopt;
    }
    std::optional<WordMatch> best;
    const auto [first, last] = vocabulary().equal_range(tokens[index].folded);
    for (auto row = first; row != last; ++row) {
        const std::size_t length =
            row->second->role == role ? coveredTokens(tokens, index, row->second->words) : 0;
        if (length > (best ? best->length : 0)) {
            best = {row->second->number, length};
        }
    }
    return best;
}

bool isWord(std::string_view folded, WordRole role) {
    const auto [first, last] = vocabulary().equal_range(folded);
    return std::any_of(first, last, [&](const auto& row) {
        return row.second->role == role && row.second->words == folded;
    });
}

} // namespace plenzo
