#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"

#include <gmock/gmock.h>

#include <string>
#include <thread>

namespace plenzo {
namespace {

TEST(AValue, GivesOnlyWhatItIs) {
    const Value text = "text";
    EXPECT_EQ(text.type(), ValueType::String);
    EXPECT_FALSE(text.date() || text.color() || text.data() || text.array() || text.dictionary());
    const Value date = Date{-1.5};
    EXPECT_EQ(date.date(), Date{-1.5});
    EXPECT_FALSE(date.string());
    EXPECT_EQ(Value(Color{1, 2, 3, 4}).color(), (Color{1, 2, 3, 4}));
    EXPECT_EQ(Value(Array()).array()->size(), 0u);
    EXPECT_EQ(Value(Dictionary()).dictionary()->size(), 0u);
    EXPECT_TRUE(Value().isNothing());
}

TEST(AValue, KeepsStringsOfEveryLengthByteForByte) {
    std::string text;
    for (int length = 0; length < 40; ++length) {
        const Value value = text;
        const Array copies{value, value};
        EXPECT_EQ(value.string(), text);
        EXPECT_EQ(copies[1].string(), text);
        text += static_cast<char>(length); // the first is a NUL
    }
}

TEST(AValue, IsIndependentOfItsCopies) {
    Value original = Dictionary{{keys::title, "Dinner"}, {keys::rem, Array{Dictionary{}}}};
    const Value before = original;
    Value copy = original;

    copy.mutableDictionary()->set(keys::title, "Supper");
    Array* reminders = copy.mutableDictionary()->findMutable(keys::rem)->mutableArray();
    reminders->findMutable(0)->mutableDictionary()->set(keys::type, 1);
    EXPECT_EQ(original, before);
    EXPECT_EQ(original.dictionary()->stringForKey(keys::title), "Dinner");
    EXPECT_TRUE((*original.dictionary()->arrayForKey(keys::rem))[0].dictionary()->empty());
    EXPECT_EQ((*copy.dictionary()->arrayForKey(keys::rem))[0].dictionary()->integerForKey("type"),
              1);

    original = copy;
    original.mutableDictionary()->clear();
    EXPECT_EQ(copy.dictionary()->size(), 2u);
}

TEST(AValue, CanBecomeAPartOfItself) {
    Value value = Array{1, "a string that is longer than a cell"};
    value = (*value.array())[1];
    EXPECT_EQ(value.string(), "a string that is longer than a cell");
    value = Array{value};
    value.mutableArray()->append(value);
    EXPECT_EQ((*value.array())[1], Value(Array{"a string that is longer than a cell"}));
}

Value nest(int depth) {
    Value value = "core";
    for (int level = 0; level < depth; ++level)
        value = level % 2 == 0 ? Value(Array{value}) : Value(Dictionary{{"inner", value}});
    return value;
}

TEST(AValue, MayNestAMillionDeep) {
    const Value left = nest(1'000'000);
    const Value right = nest(1'000'000);
    EXPECT_EQ(left, right);
    EXPECT_NE(left, nest(999'998));
}

TEST(AValue, MayBeCopiedAndDroppedOnSeveralThreads) {
    const Dictionary record{{keys::title, "a string that is longer than a cell"},
                            {"of its own", Array{1, 2, 3}}};
    auto copyAndChange = [&record] {
        for (int round = 0; round < 20'000; ++round) {
            Dictionary copy = record;
            copy.set(keys::type, round);
            ASSERT_EQ(copy.size(), record.size() + 1);
        }
    };
    std::thread one(copyAndChange);
    std::thread other(copyAndChange);
    one.join();
    other.join();
    EXPECT_EQ(record.find("of its own")->sharedContent(), nullptr);
    EXPECT_EQ(record.size(), 2u);
}

} // namespace
} // namespace plenzo
