#include "host/records/event_delta.h"
#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {

namespace {

Value record(const std::string& uid, const std::string& title = "same") {
    return Dictionary{{keys::uid, uid}, {keys::title, title}};
}

/// "-a" for a deletion notice, "a changed" for a record.
std::vector<std::string> texts(const Array& delta) {
    std::vector<std::string> texts;
    for (const Value& value : delta) {
        const Dictionary& record = *value.dictionary();
        const std::string uid(record.stringForKey(keys::uid).value_or("?"));
        texts.push_back(record.contains(keys::del)
                            ? "-" + uid
                            : uid + " " + std::string(*record.stringForKey(keys::title)));
    }
    return texts;
}

} // namespace

TEST(AnEventDelta, PairsWhatChangesWithADeletionNotice) {
    const Array first{record("a"), record("b"), record("c"), record("d")};
    const Array next{record("c"), record("b", "changed"), record("new"), record("a")};
    EXPECT_THAT(texts(eventDelta(first, next)), ElementsAre("-b", "-d", "b changed", "new same"));
    EXPECT_THAT(texts(eventDelta(next, next)), IsEmpty());
    EXPECT_THAT(texts(eventDelta(next, {})), ElementsAre("-c", "-b", "-new", "-a"));
    EXPECT_THAT(texts(eventDelta({}, {record("a")})), ElementsAre("a same"));
}

TEST(AnEventDelta, TakesTheRecordsOfOneUidTogether) {
    const Array first{record("a"), record("a", "twin"), record("b")};
    const Array next{record("a"), record("a", "other"), record("b")};
    EXPECT_THAT(texts(eventDelta(first, next)), ElementsAre("-a", "a same", "a other"));
    EXPECT_THAT(texts(eventDelta(next, {record("a"), record("b")})), ElementsAre("-a", "a same"));
}

} // namespace plenzo
