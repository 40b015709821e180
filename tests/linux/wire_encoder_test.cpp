#include "linux/wire/bus_text.h"
#include "linux/wire/value_encoder.h"
#include "support/sample_records.h"
#include "wire_link.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>
#include <string>

namespace plenzo {
namespace {

class AWireEncoder : public testing::Test {
protected:
    std::optional<Array> received(const Array& sent) {
        return m_link.sendDictionaries(
            [&](sdbus::MethodCall& call) { EXPECT_TRUE(appendDictionaries(call, sent)); });
    }

    WireLink m_link;
};

/// A dictionary in a dictionary in a dictionary, and so on: this many in all.
Dictionary dictionaryNest(int depth) {
    Dictionary nest = {{"leaf", true}};
    for (int level = 1; level < depth; ++level) {
        nest = {{"inner", nest}, {"date", Date{1}}};
    }
    return nest;
}

int depthOf(const Dictionary& nest) {
    const Dictionary* inner = nest.dictionaryForKey("inner");
    return inner != nullptr ? depthOf(*inner) + 1 : 1;
}

TEST_F(AWireEncoder, SendsEveryTypeSoThatItArrivesAsItWas) {
    const Value bytes = Value::fromData(std::as_bytes(std::span("\0\xff\x80 and more bytes")));
    const Array values = {"",
                          "Zoë",
                          std::string(1 << 20, 'x'),
                          0,
                          -1,
                          INT64_MIN,
                          INT64_MAX,
                          UINT64_MAX,
                          static_cast<std::uint64_t>(INT64_MAX) + 1,
                          0.0,
                          -1.5e300,
                          std::numeric_limits<double>::infinity(),
                          true,
                          false,
                          Date{0},
                          Date{-3.1e10},
                          bytes,
                          Value::fromData({}),
                          Array(),
                          Array{1, "a", true},
                          Array{"a", "b"},
                          Array{Array(), Array{Array{Date{5}}}},
                          Array{Dictionary{{"a", 1}}, Dictionary()},
                          Array{Dictionary{{"a", 1}}, "mixed"},
                          Dictionary(),
                          Dictionary{{"title", "x"}, {"unknown key", Dictionary{{"", 1}}}}};
    for (const Value& value : values) {
        const Value arrived = m_link.sendValue(value);
        EXPECT_EQ(arrived, value);
        EXPECT_EQ(arrived.type(), value.type());
    }
}

TEST_F(AWireEncoder, SendsArraysInTheirNarrowestForm) {
    const auto signatureOf = [this](const Array& array) {
        auto call = m_link.unsentCall();
        EXPECT_TRUE(appendDictionary(call, {{"array", array}}));
        call.seal();
        call.rewind(true);
        std::map<std::string, sdbus::Variant> entries;
        call >> entries;
        return entries.at("array").peekValueType();
    };
    EXPECT_EQ(signatureOf({Dictionary(), Dictionary()}), "aa{sv}");
    EXPECT_EQ(signatureOf({"a", "b"}), "as");
    EXPECT_EQ(signatureOf({"a", Dictionary()}), "av");
    EXPECT_EQ(signatureOf({}), "av");
}

TEST_F(AWireEncoder, LeavesOutNothingAndColoursAndWhatIsNoDictionaryInABatch) {
    const Array sent = {Dictionary{{"a", 1}, {"b", Value()}, {"c", Color{1, 2, 3, 4}}}, "text",
                        Dictionary{{"d", Array{1, Value(), Color{}, 2}}, {"e", Array{Value()}}},
                        Value()};
    EXPECT_EQ(received(sent),
              (Array{Dictionary{{"a", 1}}, Dictionary{{"d", Array{1, 2}}, {"e", Array()}}}));
}

TEST_F(AWireEncoder, CutsWhatIsNestedDeeperThanTheBusLetsThrough) {
    for (const auto& [sentDepth, arrivedDepth] :
         {std::pair(20, 20), {21, 21}, {22, 21}, {500, 21}}) {
        const auto arrived = received({dictionaryNest(sentDepth)});
        ASSERT_TRUE(arrived && arrived->size() == 1) << sentDepth;
        EXPECT_EQ(depthOf(*(*arrived)[0].dictionary()), arrivedDepth);
        EXPECT_EQ((*arrived)[0] == Value(dictionaryNest(sentDepth)), sentDepth == arrivedDepth);
    }
    Value arrays = Array();
    for (int level = 1; level < 100; ++level) {
        arrays = Array{arrays, Array{"as"}, Array{Dictionary()}, Date{2}};
    }
    Value arrived = m_link.sendValue(arrays);
    int depth = 0;
    while (const Array* array = arrived.array()) {
        arrived = (*array)[0];
        ++depth;
    }
    EXPECT_EQ(depth, 31);
}

TEST_F(AWireEncoder, SendsAnyBytesAsTextWithoutLosingTheConnection) {
    std::mt19937 random(20260503);
    Dictionary sent;
    Dictionary expected;
    for (int number = 0; number < 3000; ++number) {
        std::string bytes(1 + random() % 12, '\0');
        for (char& byte : bytes) {
            // Lead and continuation bytes are frequent enough to make sequences of every kind.
            byte = static_cast<char>(random() % 3 == 0 ? random() % 256 : 0x80 + random() % 128);
        }
        const std::string key = std::to_string(number) + bytes;
        sent.set(key, bytes);
        expected.set(busText(key), busText(bytes));
    }
    EXPECT_EQ(received({sent}), Array{expected});
    const std::string invalid(1 << 20, '\xff');
    EXPECT_EQ(m_link.sendValue(invalid), Value(busText(invalid)));
}

TEST_F(AWireEncoder, SendsNinetyThousandRecordsInOneMessage) {
    constexpr std::size_t count = 90000;
    const auto arrived = received(sampleRecords(count));
    ASSERT_TRUE(arrived);
    ASSERT_EQ(arrived->size(), count);
    for (const std::size_t number : {0UL, 1UL, 44444UL, count - 1}) {
        EXPECT_EQ((*arrived)[number], Value(sampleRecord(number)));
    }
}

TEST_F(AWireEncoder, RefusesWhatTheBusWouldBreakTheConnectionOver) {
    constexpr std::size_t limit = 64UL << 20;
    auto largest = m_link.unsentCall();
    EXPECT_TRUE(appendDictionary(largest, {{"text", std::string(limit - 100, 'x')}}));

    const std::vector<std::byte> tooMany(limit);
    const std::string tooLong(limit, 'x');
    for (const Dictionary& dictionary :
         {Dictionary{{"text", tooLong}}, Dictionary{{tooLong, 1}},
          Dictionary{{"data", Value::fromData(tooMany)}},
          Dictionary{{"half", tooLong.substr(limit / 2)}, {"other", tooLong.substr(limit / 2)}}}) {
        auto call = m_link.unsentCall();
        EXPECT_FALSE(appendDictionary(call, dictionary));
    }
}

} // namespace
} // namespace plenzo
