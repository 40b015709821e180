#include "propertylist/known_keys.h"

#include <gmock/gmock.h>

#include <string>

namespace plenzo {
namespace {

TEST(AKey, IsTheInternedOneWheneverItsNameIsKnown) {
    for (const KeyName& known : knownKeyNames) {
        const Key key{std::string(known.text())};
        EXPECT_TRUE(key.isKnown());
        EXPECT_EQ(key.name().data(), known.characters);
        EXPECT_EQ(knownKeyName(known.text()), &known);
    }
    EXPECT_EQ(keys::eventUidPlusDay, Key("event uid+day"));
    EXPECT_EQ(keys::read.name(), "read");
}

TEST(AKey, KeepsAnyOtherNameForItself) {
    for (const char* name : {"", "Title", "titl", "titles", "uid ", "äöü"}) {
        Key key{std::string(name)};
        const Key copy = key;
        key = Key("something else");
        EXPECT_FALSE(copy.isKnown());
        EXPECT_EQ(copy.name(), name);
        EXPECT_EQ(copy, Key(name));
        EXPECT_NE(copy, key);
        EXPECT_NE(copy, keys::title);
    }
    const std::string endless(1'000'000, 'x');
    EXPECT_EQ(Key(endless).name(), endless);
}

TEST(AKey, SurvivesBeingMovedAndAssignedToItself) {
    Key key("of its own");
    const Key& same = key;
    key = same;
    EXPECT_EQ(key.name(), "of its own");
    const Key moved = std::move(key);
    EXPECT_EQ(moved.name(), "of its own");
}

TEST(AKeyView, MatchesTheKeysWithItsName) {
    const Key own("of its own");
    const std::string sameText = "of its own";
    EXPECT_TRUE(KeyView(own).matches(Key(sameText)));
    EXPECT_TRUE(KeyView(sameText).matches(own));
    EXPECT_TRUE(KeyView("title").matches(keys::title));
    EXPECT_FALSE(KeyView("title").matches(keys::uid));
    EXPECT_FALSE(KeyView("title").matches(own));
    EXPECT_FALSE(KeyView(own).matches(keys::title));
    EXPECT_FALSE(KeyView("of its").matches(own));
}

} // namespace
} // namespace plenzo
