#include "propertylist/values_for_keys.h"

#include <gtest/gtest.h>

#include <string>

namespace plenzo {
namespace {

namespace number = keys::numbers;

TEST(ValuesForKeys, AreThoseOfALookupEachInADictionaryOfAnySize) {
    Dictionary dictionary{{keys::title, "t"}, {Key("unheard"), 1}, {keys::type, 2}};
    for (int size = 3; size < 40; ++size) {
        const auto [type, uid, title] =
            valuesForKeys<number::type, number::uid, number::title>(dictionary);
        EXPECT_EQ(type, dictionary.find(keys::type)) << size;
        EXPECT_EQ(uid, nullptr) << size;
        EXPECT_EQ(title, dictionary.find(keys::title)) << size;
        dictionary.set(Key("more " + std::to_string(size)), size);
    }
    EXPECT_TRUE(dictionary.isIndexed()) << "both ways of finding were taken";
}

TEST(ValuesForKeys, AreNoneInAnEmptyDictionary) {
    const auto [abs, rel] = valuesForKeys<number::abs, number::rel>(Dictionary());
    EXPECT_EQ(abs, nullptr);
    EXPECT_EQ(rel, nullptr);
}

} // namespace
} // namespace plenzo
