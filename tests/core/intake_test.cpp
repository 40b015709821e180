#include "core/test_agent.h"

#include <gmock/gmock.h>

#include <limits>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AnIntake : public testing::Test {
protected:
    Dictionary eventIn(const std::string& uid, double seconds) const {
        return event(uid, test.clock.now() + seconds, {relativeReminder(uid + "-r", 0)});
    }
    void pushFull(const Array& eventDicts) { test.agent.alarmsUpdated(eventDicts, false); }
    void pushDelta(const Array& eventDicts) { test.agent.alarmsUpdated(eventDicts, true); }

    TestAgent test;
};

TEST_F(AnIntake, KeepsTheQueueInTheOrderOfFireDatesThenTypeThenTitle) {
    const Instant at = test.clock.now() + 100;
    Dictionary toDo = event("a to-do", at, {relativeReminder("r", 0)});
    toDo.set(keys::type, 1);
    pushFull({eventIn("late", 300), toDo, event("Zebra", at, {relativeReminder("r", 0)}),
              event("apple", at, {relativeReminder("r", 0)}), eventIn("early", 5)});
    EXPECT_THAT(test.pending(),
                ElementsAre("early@5", "apple@100", "Zebra@100", "a to-do@100", "late@300"));
    EXPECT_EQ(test.timers.nextFireDate(), test.clock.now() + 5);
}

TEST_F(AnIntake, ReplacesEverythingByAFullUpdate) {
    pushFull({eventIn("a", 10), eventIn("b", 20)});
    pushFull({eventIn("c", 30)});
    EXPECT_THAT(test.pending(), ElementsAre("c@30"));
    pushFull({});
    EXPECT_THAT(test.pending(), IsEmpty());
    EXPECT_EQ(test.timers.pendingCount(), 0U);
}

TEST_F(AnIntake, PatchesByDeltas) {
    pushFull({eventIn("a", 10), eventIn("b", 20), eventIn("c", 30)});
    pushDelta({deletionNotice("a"), deletionNotice("b"), eventIn("b", 40), eventIn("d", 50)});
    EXPECT_THAT(test.pending(), ElementsAre("c@30", "b@40", "d@50"));
    pushDelta({eventIn("c", 60)});
    EXPECT_THAT(test.pending(), ElementsAre("c@30", "b@40", "d@50", "c@60"))
        << "a record without a deletion notice comes beside the old one";
    pushDelta({deletionNotice("c")});
    EXPECT_THAT(test.pending(), ElementsAre("b@40", "d@50"));
    pushDelta({eventIn("b", 70), deletionNotice("b")});
    EXPECT_THAT(test.pending(), ElementsAre("d@50", "b@70"))
        << "the order of a notice and its record does not matter";
}

TEST_F(AnIntake, ReadsNothingButTheIdentityOfADeletionNotice) {
    pushFull({eventIn("a", 10)});
    Dictionary notice = eventIn("a", 20);
    notice.set(keys::del, Value(false));
    pushDelta({notice});
    EXPECT_THAT(test.pending(), IsEmpty());
}

TEST_F(AnIntake, LivesWithRecordsThatAreNotWhatTheyShouldBe) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    Dictionary nameless = eventIn("nameless", 15);
    nameless.remove(keys::uid);
    pushFull({"text", 17, Array{}, Dictionary{}, nameless,
              Dictionary{{keys::uid, Array{}}, {keys::rem, "soon"}, {keys::date, "today"}},
              Dictionary{{keys::uid, "x"}, {keys::rem, Array{"soon", 1, Dictionary{}}}},
              event("far", Instant(1e300), {relativeReminder("r", 0)}),
              event("never", Instant(notANumber), {relativeReminder("r", 0)}),
              event("endless", test.clock.now(), {relativeReminder("r", infinity)}),
              event("undefined", test.clock.now(), {relativeReminder("r", notANumber)}),
              event("absurd", test.clock.now(), {absoluteReminder("r", Instant(-infinity))}),
              eventIn("good", 20)});
    EXPECT_THAT(test.pending(), ElementsAre("nameless@15", "good@20"));
    pushDelta({Dictionary{{keys::del, true}}, deletionNotice("unknown"), "text"});
    EXPECT_THAT(test.pending(), ElementsAre("nameless@15", "good@20"));
}

TEST(TheColourOfAnEvent, ComesFromItsPackedInteger) {
    const auto colored = std::make_shared<Dictionary>(Dictionary{{keys::colInt, 16711680}});
    const auto plain = std::make_shared<Dictionary>();
    setEventColor({colored, plain});
    EXPECT_EQ(*colored->find(keys::color), Value(Color{0xFF, 0, 0, 0xFF}));
    EXPECT_TRUE(plain->empty());
}

} // namespace
} // namespace plenzo
