#include "linux/wire/message_access.h"
#include "linux/wire/value_decoder.h"
#include "wire_link.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <limits>
#include <map>
#include <string>
#include <vector>

namespace plenzo {
namespace {

using sdbus::Variant;
using Variants = std::vector<Variant>;
using Entries = std::map<std::string, Variant>;
using Rows = std::vector<Entries>;

class AWireDecoder : public testing::Test {
protected:
    std::optional<Dictionary> received(const Entries& entries) {
        return m_link.sendDictionary([&](sdbus::MethodCall& call) { call << entries; });
    }

    WireLink m_link;
};

TEST_F(AWireDecoder, ReadsEveryTypeThatRecordsAreMadeOf) {
    struct Case {
        Variant sent;
        ValueType type;
        Value value;
    };
    const std::vector<std::uint8_t> bytes = {0, 1, 255};
    const std::vector<Case> cases = {
        {Variant("Zoë"), ValueType::String, "Zoë"},
        {Variant(std::uint8_t{255}), ValueType::Integer, 255},
        {Variant(std::int16_t{-32768}), ValueType::Integer, -32768},
        {Variant(std::uint16_t{65535}), ValueType::Integer, 65535},
        {Variant(std::int32_t{-2147483647}), ValueType::Integer, -2147483647},
        {Variant(std::uint32_t{4294967295}), ValueType::Integer, 4294967295},
        {Variant(INT64_MIN), ValueType::Integer, INT64_MIN},
        {Variant(UINT64_MAX), ValueType::Integer, UINT64_MAX},
        {Variant(-0.5), ValueType::Real, -0.5},
        {Variant(std::numeric_limits<double>::quiet_NaN()), ValueType::Real,
         std::numeric_limits<double>::quiet_NaN()},
        {Variant(true), ValueType::Boolean, true},
        {Variant(false), ValueType::Boolean, false},
        {Variant(sdbus::Struct<double>(7.5e8)), ValueType::Date, Date{7.5e8}},
        {Variant(bytes), ValueType::Data, Value::fromData(std::as_bytes(std::span(bytes)))},
        {Variant(Variants{Variant(1), Variant("two")}), ValueType::Array, Array{1, "two"}},
        {Variant(std::vector<std::string>{"a", "b"}), ValueType::Array, Array{"a", "b"}},
        {Variant(Rows{{{"uid", Variant("x")}}, {}}), ValueType::Array,
         Array{Dictionary{{"uid", "x"}}, Dictionary()}},
        {Variant(Entries{{"uid", Variant("x")}}), ValueType::Dictionary, Dictionary{{"uid", "x"}}},
    };
    for (const auto& [sent, type, value] : cases) {
        const auto dictionary = received({{"value", sent}});
        ASSERT_TRUE(dictionary);
        EXPECT_EQ(*dictionary, (Dictionary{{"value", value}})) << sent.peekValueType();
        EXPECT_EQ(dictionary->find("value")->type(), type) << sent.peekValueType();
    }
}

TEST_F(AWireDecoder, ReadsEmptyCollectionsAsEmptyCollections) {
    const auto dictionary = received({{"rows", Variant(Rows{})},
                                      {"strings", Variant(std::vector<std::string>{})},
                                      {"values", Variant(Variants{})},
                                      {"entries", Variant(Entries{})},
                                      {"bytes", Variant(std::vector<std::uint8_t>{})}});
    ASSERT_TRUE(dictionary);
    EXPECT_EQ(*dictionary, (Dictionary{{"rows", Array()},
                                       {"strings", Array()},
                                       {"values", Array()},
                                       {"entries", Dictionary()},
                                       {"bytes", Value::fromData({})}}));
    EXPECT_EQ(received({}), Dictionary());
    EXPECT_EQ(m_link.sendDictionaries([](sdbus::MethodCall& call) { call << Rows{}; }), Array());
}

TEST_F(AWireDecoder, LeavesOutWhatNoRecordIsMadeOfAndKeepsTheRest) {
    using Nested = sdbus::Struct<sdbus::Struct<double>>;
    const std::vector<Variant> cases = {
        Variant(sdbus::ObjectPath("/org/plenzo")),
        Variant(sdbus::Signature("a{sv}")),
        Variant(sdbus::UnixFd(STDERR_FILENO)),
        Variant(sdbus::Struct<double, double>(1, 2)),
        Variant(sdbus::Struct<std::string>("1")),
        Variant(sdbus::Struct<Variant>(Variant(1.0))),
        Variant(Nested(sdbus::Struct<double>(1))),
        Variant(std::vector<sdbus::Struct<double>>{sdbus::Struct<double>(1)}),
        Variant(std::vector<std::int32_t>{1, 2, 3}),
        Variant(std::vector<double>{}),
        Variant(std::vector<std::vector<std::string>>{{"a"}, {}}),
        Variant(std::vector<Variants>{{Variant(1)}}),
        Variant(std::map<std::string, std::string>{{"a", "b"}}),
        Variant(std::map<std::int32_t, Variant>{{1, Variant(1)}}),
        Variant(std::map<std::string, Variants>{{"a", {Variant(1)}}}),
    };
    for (const Variant& other : cases) {
        const auto dictionary = received({{"a", Variant("before")},
                                          {"b", other},
                                          {"c", Variant(Variants{Variant(1), other, Variant(2)})},
                                          {"d", Variant(Rows{{{"x", other}, {"y", Variant(3)}}})},
                                          {"e", Variant("after")}});
        EXPECT_EQ(dictionary, (Dictionary{{"a", "before"},
                                          {"c", Array{1, 2}},
                                          {"d", Array{Dictionary{{"y", 3}}}},
                                          {"e", "after"}}))
            << other.peekValueType();
    }
}

TEST_F(AWireDecoder, LeavesOutAVariantWithinAVariant) {
    const auto array = m_link.sendDictionaries([](sdbus::MethodCall& call) {
        call.openContainer("a{sv}").openContainer("{sv}");
        call.openDictEntry("sv");
        call << "inner";
        call.openVariant("v").openVariant("s");
        call << "text";
        call.closeVariant().closeVariant().closeDictEntry();
        call.closeContainer().closeContainer();
    });
    EXPECT_EQ(array, Array{Dictionary()});
}

TEST_F(AWireDecoder, ReadsAKeyWhoseTypeChangesFromRecordToRecord) {
    const Entries nested = {{"x", Variant(Entries{{"x", Variant(true)}, {"y", Variant(1)}})}};
    const Rows rows = {{{"x", Variant(1)}},
                       {{"x", Variant("one")}},
                       nested,
                       {{"x", Variant(Variants{})}},
                       nested,
                       {{"x", Variant(std::vector<double>{1})}},
                       {{"x", Variant(1.5)}},
                       {{"", Variant(2)}}};
    EXPECT_EQ(
        m_link.sendDictionaries([&](sdbus::MethodCall& call) { call << rows; }),
        (Array{Dictionary{{"x", 1}}, Dictionary{{"x", "one"}},
               Dictionary{{"x", Dictionary{{"x", true}, {"y", 1}}}}, Dictionary{{"x", Array()}},
               Dictionary{{"x", Dictionary{{"x", true}, {"y", 1}}}}, Dictionary(),
               Dictionary{{"x", 1.5}}, Dictionary{{"", 2}}}));
}

TEST_F(AWireDecoder, LetsTheLastOfSeveralEqualKeysCount) {
    const auto dictionary = m_link.sendDictionary([](sdbus::MethodCall& call) {
        call.openContainer("{sv}");
        for (const int number : {1, 2}) {
            call.openDictEntry("sv");
            call << "title" << Variant(number);
            call.closeDictEntry();
        }
        call.closeContainer();
    });
    EXPECT_EQ(dictionary, (Dictionary{{"title", 2}}));
}

TEST_F(AWireDecoder, ReadsMegabyteStringsAndNestsAsDeepAsTheBusLetsThrough) {
    const std::string large(1 << 20, 'x');
    Dictionary nest = {{large, large}};
    Variant sent(Entries{{large, Variant(large)}});
    for (int depth = 0; depth < 19; ++depth) {
        nest = {{"inner", nest}};
        sent = Variant(Entries{{"inner", sent}});
    }
    EXPECT_EQ(received({{"inner", sent}}), (Dictionary{{"inner", nest}}));
}

TEST_F(AWireDecoder, StopsAtTheDepthThatTheBusWouldNotLetThrough) {
    auto call = m_link.unsentCall();
    Entries sent;
    for (int depth = 0; depth < 40; ++depth) {
        sent = {{"inner", Variant(sent)}, {"number", Variant(depth)}};
    }
    call << sent;
    call.seal();
    call.rewind(true);
    const auto dictionary = readDictionary(call);
    ASSERT_TRUE(dictionary);

    int depth = 1;
    const Dictionary* inner = &*dictionary;
    while (const Dictionary* next = inner->dictionaryForKey("inner")) {
        inner = next;
        ++depth;
    }
    EXPECT_EQ(depth, 32);
    EXPECT_EQ(*inner, (Dictionary{{"number", 8}}));
}

TEST_F(AWireDecoder, GivesNothingForAnArgumentOfAnotherType) {
    auto call = m_link.unsentCall();
    call << "text" << Entries{} << Rows{};
    call.seal();
    call.rewind(true);
    EXPECT_EQ(readDictionary(call), std::nullopt);
    std::string text;
    call >> text;
    EXPECT_EQ(readDictionaries(call), std::nullopt);
    EXPECT_EQ(readDictionary(call), Dictionary());
    EXPECT_EQ(readDictionary(call), std::nullopt);
    EXPECT_EQ(readDictionaries(call), Array());
    EXPECT_EQ(readDictionaries(call), std::nullopt);
}

TEST_F(AWireDecoder, GivesNothingForAMessageThatTheLibraryCannotReadToItsEnd) {
    const auto appendNoncharacter = [](sdbus::MethodCall& call) {
        call.openContainer("{sv}").openDictEntry("sv");
        call << "title";
        call.openVariant("s");
        char* space = nullptr;
        ASSERT_GE(sd_bus_message_append_string_space(libraryMessage(call), 3, &space), 0);
        std::ranges::copy(std::string_view("\xef\xbf\xbf\0", 4), space);
        call.closeVariant().closeDictEntry().closeContainer();
    };
    EXPECT_EQ(m_link.sendDictionary(appendNoncharacter), std::nullopt);
    EXPECT_EQ(received({{"title", Variant("next")}}), (Dictionary{{"title", "next"}}));
}

TEST_F(AWireDecoder, LeavesTheCursorAtTheNextArgument) {
    auto call = m_link.unsentCall();
    call << Rows{{{"uid", Variant("x")}}} << true;
    call.seal();
    call.rewind(true);
    bool delta = false;
    EXPECT_EQ(readDictionaries(call), (Array{Dictionary{{"uid", "x"}}}));
    call >> delta;
    EXPECT_TRUE(delta);
}

} // namespace
} // namespace plenzo
