#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {
namespace {

using testing::ElementsAre;

TEST(AnArray, IgnoresPlacesBeyondItsEnd) {
    Array array{1, 2, 3};
    EXPECT_TRUE(array[3].isNothing());
    EXPECT_EQ(array.findMutable(3), nullptr);
    array.set(3, 4);
    array.remove(3);
    EXPECT_EQ(array, (Array{1, 2, 3}));
    EXPECT_TRUE(Array()[0].isNothing());
}

TEST(AnArray, KeepsItsOrderWhenElementsGoAndCome) {
    Array array;
    for (int number = 0; number < 100; ++number)
        array.append("element number " + std::to_string(number));
    const Array before = array;
    for (std::size_t index = 0; index < 50; ++index)
        array.remove(index);
    ASSERT_EQ(array.size(), 50u);
    EXPECT_EQ(array[0].string(), "element number 1");
    EXPECT_EQ(array[49].string(), "element number 99");
    array.set(0, array[49]);
    EXPECT_EQ(array[0].string(), "element number 99");
    EXPECT_EQ(before.size(), 100u);
    EXPECT_EQ(before[98].string(), "element number 98");
}

TEST(ADictionary, ReadsAnAbsentKeyAsNothing) {
    const Dictionary dictionary{{"present", 1}};
    for (const char* key : {"title", "of its own"}) {
        EXPECT_FALSE(dictionary.boolForKey(key));
        EXPECT_EQ(dictionary.integerForKey(key), 0);
        EXPECT_EQ(dictionary.doubleForKey(key), 0);
        EXPECT_FALSE(dictionary.stringForKey(key));
        EXPECT_FALSE(dictionary.dateForKey(key));
        EXPECT_FALSE(dictionary.dataForKey(key));
        EXPECT_EQ(dictionary.arrayForKey(key), nullptr);
        EXPECT_EQ(dictionary.dictionaryForKey(key), nullptr);
    }
}

TEST(ADictionary, ReadsWhatIsThereByItsType) {
    const Dictionary dictionary{{"title", "Dinner"},
                                {"date", Date{9}},
                                {"rel", "-2.5"},
                                {"rem", Array{1}},
                                {"own", Dictionary{{"a", 1}}},
                                {"book", Value::fromData(std::as_bytes(std::span("x")))}};
    EXPECT_EQ(dictionary.stringForKey(keys::title), "Dinner");
    EXPECT_EQ(dictionary.dateForKey(keys::date), Date{9});
    EXPECT_EQ(dictionary.doubleForKey(keys::rel), -2.5);
    EXPECT_EQ(dictionary.integerForKey(keys::rel), -2);
    EXPECT_TRUE(dictionary.boolForKey(keys::rel));
    EXPECT_FALSE(dictionary.dateForKey(keys::title));
    EXPECT_EQ(*dictionary.arrayForKey("rem"), Array{1});
    EXPECT_EQ(dictionary.dictionaryForKey("own")->size(), 1u);
    EXPECT_EQ(dictionary.dataForKey("book")->size(), 2u);
}

std::vector<std::string> namesOf(const Dictionary& dictionary) {
    std::vector<std::string> names;
    for (const auto& [key, value] : dictionary)
        names.emplace_back(key.name());
    return names;
}

TEST(ADictionary, ReplacesInPlaceAndKeepsItsOrder) {
    Dictionary dictionary{{"c", 1}, {"a", 2}, {"uid", 3}, {"a", 4}};
    EXPECT_THAT(namesOf(dictionary), ElementsAre("c", "a", "uid"));
    EXPECT_EQ(dictionary.integerForKey("a"), 4);
    dictionary.remove("c");
    dictionary.remove("never there");
    dictionary.set("c", 5);
    EXPECT_THAT(namesOf(dictionary), ElementsAre("a", "uid", "c"));
    *dictionary.findMutable("uid") = "changed";
    EXPECT_EQ(dictionary.stringForKey("uid"), "changed");
    EXPECT_EQ(dictionary.findMutable("never there"), nullptr);
}

/// What a dictionary should be: its entries in a plain list.
class ListedEntries {
public:
    void set(const std::string& name, int number) {
        auto place = find(name);
        if (place == m_entries.end())
            m_entries.emplace_back(name, number);
        else
            place->second = number;
    }
    void remove(const std::string& name) {
        if (auto place = find(name); place != m_entries.end())
            m_entries.erase(place);
    }
    void expectIn(const Dictionary& dictionary) const {
        ASSERT_EQ(dictionary.size(), m_entries.size());
        auto place = m_entries.begin();
        for (const auto& [key, value] : dictionary) {
            EXPECT_EQ(key.name(), place->first);
            EXPECT_EQ(value.integerValue(), place->second);
            EXPECT_EQ(dictionary.integerForKey(place->first), place->second);
            ++place;
        }
    }

private:
    std::vector<std::pair<std::string, int>>::iterator find(const std::string& name) {
        return std::find_if(m_entries.begin(), m_entries.end(),
                            [&](const auto& entry) { return entry.first == name; });
    }

    std::vector<std::pair<std::string, int>> m_entries;
};

TEST(ADictionary, BehavesAsAListOfEntriesWhileItGrowsLargeAndSmallAgain) {
    std::mt19937 random(7);
    for (unsigned nameCount : {5u, 16u, 17u, 40u, 300u}) {
        Dictionary dictionary;
        ListedEntries expected;
        for (int step = 0; step < 600; ++step) {
            const auto number = static_cast<unsigned>(random() % nameCount);
            const std::string name = number < knownKeyCount
                                         ? std::string(knownKeyNames[number].text())
                                         : "name " + std::to_string(number);
            const Dictionary snapshot = step % 3 == 0 ? dictionary : Dictionary();
            if (random() % 4 == 0) {
                dictionary.remove(name);
                expected.remove(name);
            } else {
                dictionary.set(name, step);
                expected.set(name, step);
            }
        }
        expected.expectIn(dictionary);
    }
}

TEST(ADictionary, TakesManyKeysWithoutSearchingAlongThem) {
    constexpr int count = 400'000;
    Dictionary dictionary;
    for (int number = 0; number < count; ++number)
        dictionary.set(std::to_string(number), number);
    ASSERT_EQ(dictionary.size(), std::size_t{count});
    for (int number = 0; number < count; ++number)
        ASSERT_EQ(dictionary.integerForKey(std::to_string(number)), number);
    EXPECT_FALSE(dictionary.contains("400000"));
}

} // namespace
} // namespace plenzo
